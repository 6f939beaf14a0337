#include "tools/scene/fft.h"

namespace se_scene {

size_t powerOfTwoFrom(size_t size) {
    size_t power = 1;
    while (power < size) power *= 2;
    return power;
}

Fft::Fft(size_t size) : size_(size), forward_(size, false), inverse_(size, true) {}

void Fft::forward(Spectrum& data) const {
    const Spectrum samples = data;
    forward_.transform(samples.data(), data.data());
}

void Fft::inverse(Spectrum& data) const {
    const Spectrum spectrum = data;
    inverse_.transform(spectrum.data(), data.data());
    for (auto& value : data) value /= static_cast<double>(size_);
}

}  // namespace se_scene
