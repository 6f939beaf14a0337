#include "tools/scene/playback.h"

#include <algorithm>
#include <cmath>

#include "tools/scene/measure.h"

namespace se_scene {
namespace {

using Row = std::vector<float>;

constexpr int kReach = 32;  // samples on either side of an interpolated one

// A sinc under a squared cosine; samples outside of the row are 0.
double sampleAt(const Row& row, double position) {
    const double whole = std::floor(position);
    const auto index = static_cast<ptrdiff_t>(whole);
    const double fraction = position - whole;
    const auto sample = [&](ptrdiff_t i) {
        return i >= 0 && i < static_cast<ptrdiff_t>(row.size())
                   ? static_cast<double>(row[static_cast<size_t>(i)])
                   : 0;
    };
    if (fraction == 0) return sample(index);
    double sum = 0;
    for (int k = 1 - kReach; k <= kReach; ++k) {
        const double distance = k - fraction;
        const double window = std::cos(M_PI_2 * distance / (kReach + 1));
        sum += sample(index + k) * std::sin(M_PI * distance) / (M_PI * distance) * window * window;
    }
    return sum;
}

}  // namespace

std::vector<float> played(const Row& far_end, const SceneOptions& options) {
    const double limit = fromDecibels(options.loudspeaker_limit_dbfs);
    const double delay = options.echo_delay_ms * kSampleRate / 1000;
    const double jump = options.echo_jump_ms * kSampleRate / 1000;
    const double jump_at = options.echo_jump_s.value_or(options.seconds) * kSampleRate;
    const double back_at = options.echo_jump_back_s.value_or(options.seconds) * kSampleRate;
    Row result(far_end.size());
    for (size_t i = 0; i < result.size(); ++i) {
        const double time = static_cast<double>(i);
        const double late =
            delay + time * options.echo_drift_ppm * 1e-6 + (time >= jump_at && time < back_at ? jump : 0);
        result[i] = static_cast<float>(std::clamp(sampleAt(far_end, time - late), -limit, limit));
    }
    return result;
}

}  // namespace se_scene
