// Magnitude spectrum of a block of samples.
// Each call has its own context.
#include "webrtc_common/se_wrapper/dsp/simple_fft.h"

#include <cmath>
#include <cstddef>

#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/se_wrapper/dsp/fft_context.h"

namespace quill::media::se_wrapper {

void simpleFFT(const int16_t* samples, int n, std::vector<float>* spectrum) {
    constexpr double kFullScale = 1.0 / 32768.0;
    const FFTContext context(static_cast<uint16_t>(n), 0);
    const std::size_t size = context.dft_size_;
    float* const bins = context.scratch_.get();

    for (std::size_t i = 0; i < size; ++i) bins[i] = static_cast<float>(samples[i] * kFullScale);
    __ogg_fdrfftf(context.dft_size_, bins, context.twiddles_.get(), context.factors_.get());

    const std::size_t half = size / 2;
    spectrum->resize(half);
    if (half == 0) return;
    (*spectrum)[0] = bins[0];
    for (std::size_t k = 1; k < half; ++k) {
        const float re = bins[2 * k - 1];
        const float im = bins[2 * k];
        const auto power = static_cast<double>(re * re + im * im);
        (*spectrum)[k] = static_cast<float>(std::sqrt(power) / static_cast<double>(half));
    }
}

}  // namespace quill::media::se_wrapper
