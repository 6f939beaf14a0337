#include "tools/scene/random.h"

#include <cmath>

namespace se_scene {

namespace {

std::mt19937 generatorFor(uint32_t seed, Stream stream) {
    std::seed_seq sequence{seed, static_cast<uint32_t>(stream)};
    return std::mt19937(sequence);
}

}  // namespace

Random::Random(uint32_t seed, Stream stream) : generator_(generatorFor(seed, stream)) {}

double Random::uniform() {
    return (static_cast<double>(generator_()) + 0.5) / 4294967296.0;
}

double Random::uniform(double low, double high) {
    return low + (high - low) * uniform();
}

size_t Random::below(size_t count) {
    return static_cast<size_t>(uniform() * static_cast<double>(count));
}

double Random::gaussian() {
    if (has_spare_) {
        has_spare_ = false;
        return spare_;
    }
    const std::complex<double> pair = complexGaussian();
    spare_ = pair.imag();
    has_spare_ = true;
    return pair.real();
}

// Box and Muller (1958).
std::complex<double> Random::complexGaussian() {
    const double radius = std::sqrt(-2 * std::log(uniform()));
    const double angle = 2 * M_PI * uniform();
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

}  // namespace se_scene
