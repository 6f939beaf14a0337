// Passes of any odd radix, for the factors from 7 on. Compiled for the floor processor alone.
#pragma once

#include "webrtc_common/fftpack/stage.h"

namespace quill::fftpack {

// in, out: n floats each, not overlapping; `in` serves as scratch. For an odd width, the only one behind such
// a factor.
void forwardGeneral(const Stage& stage, float* in, float* out);
void backwardGeneral(const Stage& stage, float* in, float* out);

}  // namespace quill::fftpack
