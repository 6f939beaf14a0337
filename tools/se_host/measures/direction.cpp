#include "tools/se_host/measures/direction.h"

#include <algorithm>
#include <cmath>
#include <complex>

namespace se_host {
namespace {

constexpr double kLeastConfidence = 0.01;  // lower values are noise
constexpr double kLeastLength = 0.05;      // of the mean vector that has a direction
constexpr double kSmall = 1e-6;            // degrees, of the sum's rounding errors
constexpr double kRadians = M_PI / 180;

// 0 to 360.
double azimuthOf(std::complex<double> sum) {
    const double degrees = std::arg(sum) / kRadians;
    return degrees < -kSmall ? degrees + 360 : std::max(degrees, 0.0);
}

}  // namespace

std::optional<MeanDirection> meanDirection(const std::vector<Direction>& directions, Span span) {
    const size_t end = std::min(span.end, directions.size());
    std::complex<double> sum = 0;
    double weights = 0;
    for (size_t block = span.begin; block < end; ++block) {
        const Direction& direction = directions[block];
        const double weight = direction.confidence / 32767.0;
        const double degrees = direction.location * Direction::kDegreesPerLocation;
        sum += std::polar(weight, degrees * kRadians);
        weights += weight;
    }
    if (!(weights > kLeastConfidence * static_cast<double>(end - std::min(span.begin, end))))
        return std::nullopt;
    const double length = std::min(std::abs(sum) / weights, 1.0);
    return MeanDirection{length < kLeastLength ? std::nullopt : std::optional(azimuthOf(sum)),
                         std::sqrt(2 * (1 - length)) / kRadians};
}

}  // namespace se_host
