#include "bench/routines_vs_libraries/signals.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace routines_vs_libraries {
namespace {

template <class T>
double largest(const T* got, const int16_t* expected, size_t count) {
    double difference = 0;
    for (size_t i = 0; i < count; ++i) {
        difference = std::max(difference, std::fabs(static_cast<double>(got[i]) - expected[i]));
    }
    return difference;
}

}  // namespace

Samples noise(size_t count, int peak, uint32_t seed) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> values(-peak, peak);
    Samples samples(count);
    for (int16_t& sample : samples) sample = static_cast<int16_t>(values(random));
    return samples;
}

Floats widened(const Samples& samples, float factor) {
    Floats floats;
    floats.reserve(samples.size());
    for (const int16_t sample : samples) floats.push_back(static_cast<float>(sample) * factor);
    return floats;
}

double largestDifference(const int16_t* got, const int16_t* expected, size_t count) {
    return largest(got, expected, count);
}

double largestDifference(const float* got, const int16_t* expected, size_t count) {
    return largest(got, expected, count);
}

double relativeError(const float* got, const float* expected, size_t count) {
    double error = 0, norm = 0;
    for (size_t i = 0; i < count; ++i) {
        error += std::pow(static_cast<double>(got[i]) - static_cast<double>(expected[i]), 2);
        norm += std::pow(static_cast<double>(expected[i]), 2);
    }
    return std::sqrt(error / norm);
}

double toneError(const Floats& samples, double frequency, double amplitude) {
    // Least squares of cosine and sine, which are not quite orthogonal over a part of a period.
    double cc = 0, cs = 0, ss = 0, xc = 0, xs = 0, xx = 0;
    for (size_t i = 0; i < samples.size(); ++i) {
        const double phase = 2 * M_PI * frequency * static_cast<double>(i);
        const double c = std::cos(phase), s = std::sin(phase), x = static_cast<double>(samples[i]);
        cc += c * c, cs += c * s, ss += s * s, xc += x * c, xs += x * s, xx += x * x;
    }
    const double determinant = cc * ss - cs * cs;
    const double a = (xc * ss - xs * cs) / determinant, b = (xs * cc - xc * cs) / determinant;
    const double left = std::max(0.0, xx - a * xc - b * xs);
    const double residue = std::sqrt(2 * left / static_cast<double>(samples.size()));
    return (residue + std::fabs(std::hypot(a, b) - amplitude)) / amplitude;
}

}  // namespace routines_vs_libraries
