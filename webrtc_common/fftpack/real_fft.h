// The builds of the real FFT and the selected one. They differ in encoding and in the width of their vectors,
// never in a bit of their results.
// Threads: the transforms any, the selection set-up only.
#pragma once

#include <cstdint>

#include "common/cpu_info.h"
#include "webrtc_common/export.h"
#include "webrtc_common/kernel_variants.h"

namespace quill::fftpack {

// An in-place transform with the arguments of __ogg_fdrfftf and __ogg_fdrfftb. [any] rt-safe
using RealFft = void(int n, float* r, float* wsave, const int* ifac);

// The same transforms between n 16-bit samples and the n values of a half spectrum packed into 16 bits, in which
// value 0 stands at [0], value k at [k + 1], and the first and the last are halves. r: scratch of n floats.
// needs: r, wsave and ifac overlap nothing; samples and spectrum may be the same.

// spectrum[k + 1] = x[k] * scale in single precision, truncated to 32 bits, of which the low 16 are kept. That
// holds for value 0 too, which is left at [1], and both halvings are left to the caller.
// Kept on purpose: no saturation, because the engine's forward transform has none. [any] rt-safe
using ForwardSamples = void(int n, const int16_t* samples, float scale, int16_t* spectrum, float* r,
                            float* wsave, const int* ifac);

// samples[i] = (x[i] * gain + 512 in single precision, truncated) >> 10, saturated to 16 bits, for a value of any
// size. needs: a gain that is a number. [any] rt-safe
using BackwardSamples = void(int n, const int16_t* spectrum, float gain, int16_t* samples, float* r,
                             float* wsave, const int* ifac);

struct RealFftVariant : KernelVariant {
    RealFft* forward;
    RealFft* backward;
    ForwardSamples* forward_samples;
    BackwardSamples* backward_samples;
};

SE_WRAPPER_EXPORT extern const KernelVariants<RealFftVariant> kRealFftVariants;

// The build that __ogg_fdrfftf and __ogg_fdrfftb run: the floor, that for SSE4.1, before any code runs, another after
// selectRealFft.
SE_WRAPPER_EXPORT extern const RealFftVariant* g_real_fft;

// Selects the widest build that `cpu` runs; on the floor alone leaves the selection as it is.
// needs: no transform is running. [setup]
SE_WRAPPER_EXPORT void selectRealFft(const CPUInfo& cpu);

}  // namespace quill::fftpack
