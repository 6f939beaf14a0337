#include "tools/scene/propagation.h"

#include <algorithm>

namespace se_scene {

namespace {

constexpr double kReach = kImpulseReach;

// cos and sin of pi i / reach for the offsets i that an impulse covers.
struct WindowAngles {
    std::array<double, 2 * kImpulseReach> cosine;
    std::array<double, 2 * kImpulseReach> sine;

    WindowAngles() {
        for (size_t i = 0; i < cosine.size(); ++i) {
            const double angle = M_PI * (static_cast<double>(i) + 1 - kReach) / kReach;
            cosine[i] = std::cos(angle);
            sine[i] = std::sin(angle);
        }
    }
};

}  // namespace

void addImpulse(std::vector<double>& response, double time, double height) {
    static const WindowAngles angles;
    const double whole = std::floor(time);
    const double fraction = time - whole;
    const double sine = std::sin(M_PI * fraction) / M_PI;
    const double cosine_shift = std::cos(M_PI * fraction / kReach);
    const double sine_shift = std::sin(M_PI * fraction / kReach);

    const auto first = static_cast<ptrdiff_t>(whole) + 1 - static_cast<ptrdiff_t>(kImpulseReach);
    const auto size = static_cast<ptrdiff_t>(response.size());
    const ptrdiff_t begin = std::max<ptrdiff_t>(0, -first);
    const ptrdiff_t end = std::min<ptrdiff_t>(2 * kImpulseReach, size - first);
    for (ptrdiff_t i = begin; i < end; ++i) {
        const auto k = static_cast<size_t>(i);
        const double x = static_cast<double>(i) + 1 - kReach - fraction;  // samples after `time`
        const double window = 0.5 + 0.5 * (angles.cosine[k] * cosine_shift + angles.sine[k] * sine_shift);
        const double sign = k % 2 == 0 ? 1 : -1;  // of sin(pi x) against -sin(pi fraction), reach being even
        const double sinc = std::abs(x) < 1e-9 ? 1 : sign * sine / x;
        response[static_cast<size_t>(first + i)] += height * window * sinc;
    }
}

ImpulseResponses freeFieldResponses(const Point& source, const MicrophonePositions& microphones) {
    ImpulseResponses responses;
    responses.lead = kImpulseReach;
    double farthest = 0;
    for (const Point& microphone : microphones) farthest = std::max(farthest, length(source - microphone));
    const auto taps = static_cast<size_t>(farthest * kSamplesPerMetre) + 1 + 2 * kImpulseReach;
    for (const Point& microphone : microphones) {
        const double distance = length(source - microphone);
        auto& row = responses.rows.emplace_back(taps);
        addImpulse(row, distance * kSamplesPerMetre + kReach, 1 / distance);
    }
    return responses;
}

}  // namespace se_scene
