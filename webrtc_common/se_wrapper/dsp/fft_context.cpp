// The tables of one real FFT and the list of all that the engine has received.
#include "webrtc_common/se_wrapper/dsp/fft_context.h"

#include <cstddef>

#include "webrtc_common/fftpack/fftpack.h"

namespace quill::media::se_wrapper {

std::vector<FFTContext*> g_fft_contexts;

FFTContext::FFTContext(uint16_t dft_size, uint16_t data_len) : dft_size_(dft_size), data_len_(data_len) {
    const std::size_t n = dft_size;
    twiddles_ = std::make_unique<float[]>(2 * n + 15);
    scratch_ = std::make_unique<float[]>(n);
    factors_ = std::make_unique<int[]>(20);
    __ogg_fdrffti(dft_size, twiddles_.get(), factors_.get());
}

FFTContext::~FFTContext() = default;

}  // namespace quill::media::se_wrapper
