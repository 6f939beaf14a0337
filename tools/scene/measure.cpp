#include "tools/scene/measure.h"

#include <algorithm>
#include <cmath>

#include "tools/scene/fft.h"

namespace se_scene {

namespace {

constexpr size_t kActivityBlock = kSampleRate / 50;
constexpr double kActivityRange = 1e-3;  // in power: 30 dB

Spectrum paddedSpectrum(const Row& row, const Fft& fft) {
    Spectrum spectrum(fft.size());
    std::copy(row.begin(), row.end(), spectrum.begin());
    fft.forward(spectrum);
    return spectrum;
}

// The band-limited cross-correlation at any lag, from the cross-spectrum.
double correlationAt(const Spectrum& cross, double lag) {
    const std::complex<double> step = std::polar(1.0, 2 * M_PI * lag / static_cast<double>(cross.size()));
    std::complex<double> phase = 1;
    double sum = 0;
    for (size_t k = 0; k < cross.size() / 2; ++k) {
        sum += product(cross[k], phase).real();
        phase = product(phase, step);
    }
    return sum;
}

double highestAround(const Spectrum& cross, double center, double radius, double step) {
    double best = center;
    double highest = correlationAt(cross, center);
    for (double lag = center - radius; lag <= center + radius; lag += step) {
        const double value = correlationAt(cross, lag);
        if (value > highest) {
            highest = value;
            best = lag;
        }
    }
    return best;
}

}  // namespace

double fromDecibels(double level) {
    return std::pow(10.0, level / 20);
}

double decibelsOfPower(double power) {
    return power > 0 ? 10 * std::log10(power) : kSilent;
}

double powerOf(const Row& row) {
    double sum = 0;
    for (float sample : row) sum += static_cast<double>(sample) * static_cast<double>(sample);
    return row.empty() ? 0 : sum / static_cast<double>(row.size());
}

double levelDbfs(const Row& row) {
    return decibelsOfPower(powerOf(row));
}

double activeLevelDbfs(const Row& row) {
    std::vector<double> powers;
    for (size_t start = 0; start < row.size(); start += kActivityBlock) {
        const auto begin = row.begin() + static_cast<ptrdiff_t>(start);
        const size_t count = std::min(kActivityBlock, row.size() - start);
        powers.push_back(powerOf(Row(begin, begin + static_cast<ptrdiff_t>(count))));
    }
    if (powers.empty()) return kSilent;
    const double threshold = kActivityRange * *std::max_element(powers.begin(), powers.end());
    double sum = 0;
    double count = 0;
    for (double power : powers) {
        if (power < threshold) continue;
        sum += power;
        count += 1;
    }
    return decibelsOfPower(sum / count);
}

double ratioDb(const Row& signal, const Row& noise) {
    return levelDbfs(signal) - levelDbfs(noise);
}

Row excerpt(const Row& row, double begin_s, double end_s) {
    const auto sampleAt = [&row](double seconds) {
        const double sample =
            std::clamp(std::round(seconds * kSampleRate), 0.0, static_cast<double>(row.size()));
        return row.begin() + static_cast<ptrdiff_t>(sample);
    };
    return begin_s < end_s ? Row(sampleAt(begin_s), sampleAt(end_s)) : Row();
}

double delayBetween(const Row& reference, const Row& delayed, int reach) {
    const Fft fft(
        powerOfTwoFrom(std::max(reference.size(), delayed.size()) + static_cast<size_t>(reach) + 1));
    Spectrum cross = paddedSpectrum(delayed, fft);
    const Spectrum other = paddedSpectrum(reference, fft);
    for (size_t k = 0; k < cross.size(); ++k) cross[k] = product(cross[k], std::conj(other[k]));
    const double coarse = highestAround(cross, 0, reach, 0.5);
    const double finer = highestAround(cross, coarse, 0.5, 0.05);
    return highestAround(cross, finer, 0.05, 0.005);
}

}  // namespace se_scene
