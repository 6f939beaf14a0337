#include "tools/scene/fft.h"

#include <cmath>
#include <utility>

namespace se_scene {

size_t powerOfTwoFrom(size_t size) {
    size_t power = 1;
    while (power < size) power *= 2;
    return power;
}

Fft::Fft(size_t size) : reversed_(size), twiddles_(size / 2) {
    for (size_t i = 1; i < size; ++i) reversed_[i] = reversed_[i / 2] / 2 + (i % 2 ? size / 2 : 0);
    for (size_t k = 0; k < size / 2; ++k) {
        twiddles_[k] = std::polar(1.0, -2 * M_PI * static_cast<double>(k) / static_cast<double>(size));
    }
}

void Fft::forward(Spectrum& data) const {
    for (size_t i = 0; i < size(); ++i) {
        if (i < reversed_[i]) std::swap(data[i], data[reversed_[i]]);
    }
    for (size_t half = 1; half < size(); half *= 2) {
        const size_t stride = size() / (2 * half);
        for (size_t start = 0; start < size(); start += 2 * half) {
            for (size_t k = 0; k < half; ++k) {
                const std::complex<double> even = data[start + k];
                const std::complex<double> odd = product(data[start + half + k], twiddles_[k * stride]);
                data[start + k] = even + odd;
                data[start + half + k] = even - odd;
            }
        }
    }
}

void Fft::inverse(Spectrum& data) const {
    const double scale = 1.0 / static_cast<double>(size());
    for (auto& value : data) value = std::conj(value);
    forward(data);
    for (auto& value : data) value = std::conj(value) * scale;
}

}  // namespace se_scene
