// The tables of one real FFT and the list of all that were ever handed to the engine.
// Threads: made at set-up; a context serves one transform at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// A transform of `dft_size_` real samples. Immutable once made, its scratch excepted.
struct SE_WRAPPER_EXPORT FFTContext {
    // Allocates and fills the tables. fails: std::bad_alloc passes, with nothing left behind. [setup]
    FFTContext(uint16_t dft_size, uint16_t data_len);
    ~FFTContext();  // releases the factors first, the twiddles last

    uint16_t dft_size_;
    uint16_t data_len_;                  // meaningful samples in a block, for the zero-padding transforms
    std::unique_ptr<float[]> twiddles_;  // wsave of webrtc_common/fftpack/fftpack.h, 2 dft_size_ + 15 entries
    std::unique_ptr<float[]> scratch_;   // the transform's data, dft_size_ entries, of both directions
    std::unique_ptr<int[]> factors_;     // ifac, 20 entries
};

// Every context that an object of the engine points to, in the order of their making. The engine keeps these
// pointers to the end of the process, so nothing is ever taken out or deleted. [setup]
SE_WRAPPER_EXPORT extern std::vector<FFTContext*> g_fft_contexts;

}  // namespace quill::media::se_wrapper
