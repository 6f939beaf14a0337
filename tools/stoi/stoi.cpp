#include "tools/stoi/stoi.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "tools/stoi/envelopes.h"

namespace stoi {
namespace {

constexpr size_t kSegment = 30;     // frames: 384 ms
constexpr double kLowestSdr = -15;  // dB: a worse part of a segment makes it no less intelligible

using Segment = std::array<double, kSegment>;

Segment segmentOf(const Envelopes& envelopes, size_t begin, size_t band) {
    Segment segment;
    for (size_t i = 0; i < kSegment; ++i) segment[i] = envelopes[begin + i][band];
    return segment;
}

double product(const Segment& a, const Segment& b) {
    double sum = 0;
    for (size_t i = 0; i < kSegment; ++i) sum += a[i] * b[i];
    return sum;
}

Segment withoutMean(Segment segment) {
    double sum = 0;
    for (const double value : segment) sum += value;
    for (double& value : segment) value -= sum / kSegment;
    return segment;
}

double correlation(const Segment& a, const Segment& b) {
    const Segment x = withoutMean(a);
    const Segment y = withoutMean(b);
    const double norms = std::sqrt(product(x, x) * product(y, y));
    return norms > 0 ? product(x, y) / norms : 0;
}

// As loud as the clean segment, and clipped where it exceeds that by too much.
Segment normalised(Segment processed, const Segment& clean) {
    const double energy = product(processed, processed);
    const double gain = energy > 0 ? std::sqrt(product(clean, clean) / energy) : 0;
    const double highest = 1 + std::pow(10, -kLowestSdr / 20);
    for (size_t i = 0; i < kSegment; ++i) processed[i] = std::min(gain * processed[i], highest * clean[i]);
    return processed;
}

}  // namespace

double intelligibility(const std::vector<float>& clean, const std::vector<float>& processed,
                       double sample_rate) {
    if (clean.size() != processed.size()) throw std::invalid_argument("the signals have different lengths");
    Signal x = atTenKilohertz(clean, sample_rate);
    Signal y = atTenKilohertz(processed, sample_rate);
    removePauses(x, y);
    const Envelopes of_clean = envelopesOf(x);
    const Envelopes of_processed = envelopesOf(y);
    if (of_clean.size() < kSegment)
        throw std::invalid_argument("the clean signal has less than 0.4 s of sound");

    double sum = 0;
    const size_t segments = of_clean.size() - kSegment + 1;
    for (size_t begin = 0; begin < segments; ++begin) {
        for (size_t band = 0; band < kBands; ++band) {
            const Segment reference = segmentOf(of_clean, begin, band);
            sum += correlation(reference, normalised(segmentOf(of_processed, begin, band), reference));
        }
    }
    return sum / static_cast<double>(segments * kBands);
}

}  // namespace stoi
