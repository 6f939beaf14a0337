// Magnitude spectrum of a block of samples, for occasional analysis.
// It allocates its tables at each call: not for the audio path.
#pragma once

#include <cstdint>
#include <vector>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// Magnitudes of bins 0 to n/2 - 1 of n samples; a full-scale sine on a bin gives about 1.0.
// in:    n samples, full scale 1.0; n is taken modulo 65536, as the tables' size is.
// out:   spectrum, resized to n/2. [0] is the sum of the samples.
// needs: n of 2 or more; less gives an empty spectrum.
// fails: std::bad_alloc passes.
// Kept on purpose: the sum in [0] is signed and not normalised, unlike the other bins, because callers read
// the offset of a block from it. The bin at half the sampling rate is left out.
// [any]
SE_WRAPPER_EXPORT void simpleFFT(const int16_t* samples, int n, std::vector<float>* spectrum);

}  // namespace quill::media::se_wrapper
