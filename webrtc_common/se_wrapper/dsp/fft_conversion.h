// Between the engine's 16-bit values and the floats of the FFT, eight at a time; what remains is converted
// one by one to the same bits. Threads: any.
//
// in and out of a call do not overlap: one of them is always a context's private scratch. So the engine may
// pass one buffer for both sides of a transform. A count of 0 or less converts nothing.
// All: [any] rt-safe.
#pragma once

#include <cstdint>

namespace quill::media::se_wrapper {

// out[i] = in[i].
void widen(const int16_t* in, float* out, int count);

// out[i] = in[i] * scale in single precision, truncated to 32 bits, of which the low 16 are kept.
// Kept on purpose: no saturation, because the engine's forward transform has none.
void narrowScaled(const float* in, float scale, int16_t* out, int count);

// The same for one value, halved in double precision before it is truncated.
int16_t narrowScaledHalf(float in, float scale);

// out[i] = (in[i] * gain + 512 in single precision, truncated to 32 bits) >> 10, saturated to 16 bits.
// Kept on purpose: what exceeds 32 bits, of either sign, truncates to -2^31, the answer of the processor's
// conversion, and so leaves as -32768.
void narrowQ10(const float* in, float gain, int16_t* out, int count);

}  // namespace quill::media::se_wrapper
