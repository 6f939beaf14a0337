// Between the engine's 16-bit values and the floats of the FFT, eight at a time; the last eight may overlap
// those before, and fewer than eight are converted one by one, all to the same bits.
// Threads: the conversions any, the selection set-up only.
//
// in and out of a call do not overlap: one of them is always a context's private scratch. So the engine may
// pass one buffer for both sides of a transform. A count of 0 or less converts nothing.
#pragma once

#include <emmintrin.h>

#include <cstdint>

#include "common/cpu_info.h"
#include "webrtc_common/se_wrapper/export.h"

namespace quill::media::se_wrapper {

// One build of the conversions and the processor feature that it needs. All: [any] rt-safe
struct FftConversions {
    const char* name;
    bool CPUInfo::*feature;

    // out[i] = in[i].
    void (*widen)(const int16_t* in, float* out, int count);

    // out[i] = in[i] * scale in single precision, truncated to 32 bits, of which the low 16 are kept.
    // Kept on purpose: no saturation, because the engine's forward transform has none.
    void (*narrowScaled)(const float* in, float scale, int16_t* out, int count);

    // out[i] = (in[i] * gain + 512 in single precision, truncated to 32 bits) >> 10, saturated to 16 bits.
    // Kept on purpose: what exceeds 32 bits, of either sign, truncates to -2^31, the answer of the processor's
    // conversion, and so leaves as -32768.
    void (*narrowQ10)(const float* in, float gain, int16_t* out, int count);
};

inline constexpr int kNumFftConversions = 2;

// Every build, the floor first, for whoever lists, checks or measures them.
SE_WRAPPER_EXPORT extern const FftConversions kFftConversions[kNumFftConversions];

// The build that the FFT hooks use: that for SSE4.1 before any code runs, another after selectFftConversions.
SE_WRAPPER_EXPORT extern const FftConversions* g_fft_conversions;

// Selects the build for AVX2 exactly when `cpu` has AVX2; otherwise leaves the selection alone.
// needs: no hook is running. [setup]
SE_WRAPPER_EXPORT void selectFftConversions(const CPUInfo& cpu);

// Like narrowScaled for one value, halved in double precision before it is truncated. The instruction converts,
// because a cast in the language is undefined outside the range of its target. [any] rt-safe
inline int16_t narrowScaledHalf(float in, float scale) {
    const double half = static_cast<double>(in * scale) * 0.5;
    return static_cast<int16_t>(_mm_cvttsd_si32(_mm_set_sd(half)));
}

}  // namespace quill::media::se_wrapper
