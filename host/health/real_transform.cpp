#include "host/health/real_transform.h"

#include "webrtc_common/fftpack/fftpack.h"

namespace se_host {

RealTransform::RealTransform(int size)
    : size_(size), tables_(2 * static_cast<size_t>(size) + 15), factors_(20) {
    __ogg_fdrffti(size_, tables_.data(), factors_.data());
}

std::vector<std::complex<float>> RealTransform::forward(std::vector<float> samples) {
    __ogg_fdrfftf(size_, samples.data(), tables_.data(), factors_.data());
    std::vector<std::complex<float>> bins(samples.size() / 2 + 1);
    bins.front() = samples.front();
    bins.back() = samples.back();
    for (size_t k = 1; k + 1 < bins.size(); ++k) bins[k] = {samples[2 * k - 1], samples[2 * k]};
    return bins;
}

std::vector<float> RealTransform::backward(const std::vector<std::complex<float>>& bins) {
    std::vector<float> samples(static_cast<size_t>(size_));
    samples.front() = bins.front().real();
    samples.back() = bins.back().real();
    for (size_t k = 1; k + 1 < bins.size(); ++k) {
        samples[2 * k - 1] = bins[k].real();
        samples[2 * k] = bins[k].imag();
    }
    __ogg_fdrfftb(size_, samples.data(), tables_.data(), factors_.data());
    return samples;
}

}  // namespace se_host
