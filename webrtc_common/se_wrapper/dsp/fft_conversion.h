// The one value of a spectrum that is converted by itself.
// Threads: any.
#pragma once

#include <emmintrin.h>

#include <cstdint>

namespace quill::media::se_wrapper {

// Like narrowScaled of dsp_kernels.h for one value, halved in double precision before it is truncated. The
// instruction converts, because a cast in the language is undefined outside the range of its target.
// [any] rt-safe
inline int16_t narrowScaledHalf(float in, float scale) {
    const double half = static_cast<double>(in * scale) * 0.5;
    return static_cast<int16_t>(_mm_cvttsd_si32(_mm_set_sd(half)));
}

}  // namespace quill::media::se_wrapper
