#include "tools/se_host/measures/speech_level.h"

#include <array>
#include <cmath>

#include "host/engine/sample_rate.h"

namespace se_host {
namespace {

constexpr double kTimeConstant = 0.03;  // s, of the envelope
constexpr size_t kHangover =
    2 * size_t{kEngineSampleRate} / 10;  // samples that count after the envelope has fallen
constexpr double kMargin = 15.9;         // dB, of the level above the threshold
constexpr size_t kThresholds = 15;       // 1, 2, 4 ... 16384

double decibels(double power) {
    return 10 * std::log10(power / (32768.0 * 32768.0));
}

// The samples at which the envelope was above a threshold within the hangover.
struct Activity {
    double threshold = 1;
    size_t count = 0;
    size_t silent_for = kHangover;

    void add(double envelope) {
        if (envelope >= threshold) {
            ++count;
            silent_for = 0;
        } else if (silent_for < kHangover) {
            ++count;
            ++silent_for;
        }
    }
};

}  // namespace

std::optional<double> activeSpeechLevel(const std::vector<int16_t>& samples) {
    const double keep = std::exp(-1 / (kEngineSampleRate * kTimeConstant));
    std::array<Activity, kThresholds> activities;
    for (size_t i = 1; i < kThresholds; ++i) activities[i].threshold = 2 * activities[i - 1].threshold;

    double energy = 0, smooth = 0, envelope = 0;
    for (const double sample : samples) {
        energy += sample * sample;
        smooth = keep * smooth + (1 - keep) * std::abs(sample);
        envelope = keep * envelope + (1 - keep) * smooth;
        for (Activity& activity : activities) activity.add(envelope);
    }

    double level_before = 0, above_before = 0;
    for (size_t i = 0; i < kThresholds && activities[i].count > 0; ++i) {
        const double level = decibels(energy / static_cast<double>(activities[i].count));
        const double threshold = activities[i].threshold;
        const double above = level - decibels(threshold * threshold);
        if (above <= kMargin) {
            if (i == 0) return level;
            return level_before + (level - level_before) * (above_before - kMargin) / (above_before - above);
        }
        level_before = level;
        above_before = above;
    }
    return std::nullopt;
}

}  // namespace se_host
