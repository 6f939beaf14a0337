// Signals that the tests send through the engine, as samples. Deterministic.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace reference_engine_test {

using Samples = std::vector<int16_t>;

inline int16_t rounded(double value) {
    return static_cast<int16_t>(std::clamp(std::lround(value), -32768L, 32767L));
}

inline Samples whiteNoise(size_t frames, double level_dbfs, uint32_t seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> normal(0, 32768 * std::pow(10, level_dbfs / 20));
    Samples samples(frames);
    for (int16_t& sample : samples) sample = rounded(normal(random));
    return samples;
}

inline Samples sine(size_t frames, double frequency_hz, double peak) {
    Samples samples(frames);
    for (size_t i = 0; i < frames; ++i) {
        samples[i] = rounded(peak * std::sin(2 * M_PI * frequency_hz * static_cast<double>(i) / 16000));
    }
    return samples;
}

// Half a period at `high`, half at `low`.
inline Samples square(size_t frames, size_t period, int16_t high = 32767, int16_t low = -32768) {
    Samples samples(frames);
    for (size_t i = 0; i < frames; ++i) samples[i] = i % period < period / 2 ? high : low;
    return samples;
}

// From sample `begin` on.
inline double powerOf(const Samples& samples, size_t begin = 0) {
    double sum = 0;
    for (size_t i = begin; i < samples.size(); ++i) sum += double{1} * samples[i] * samples[i];
    return sum / static_cast<double>(samples.size() - begin);
}

inline double decibels(double power_ratio) {
    return 10 * std::log10(power_ratio);
}

}  // namespace reference_engine_test
