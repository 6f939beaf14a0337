#include "tools/se_host/measures/speech_level.h"

#include <algorithm>
#include <cmath>

#include "host/engine/sample_rate.h"

namespace se_host {
namespace {

constexpr double kKeep =
    0.9979188352992993;  // exp(-1 / (16000 * 0.03)): of the envelope, from sample to sample
constexpr size_t kHangover =
    2 * size_t{kEngineSampleRate} / 10;   // samples that count after the envelope has fallen
constexpr double kMargin = 15.9;          // dB, of the level above the threshold
constexpr size_t kThresholds = 15;        // 1, 2, 4 ... 16384
constexpr double kThresholdSteps = 1024;  // of the threshold of the level, in 1
constexpr size_t kLeastSamples = size_t{kEngineSampleRate} / 10;

double decibels(double power) {
    return 10 * std::log10(power / (32768.0 * 32768.0));
}

class Envelope {
  public:
    double after(double sample) {
        smooth_ = kKeep * smooth_ + (1 - kKeep) * std::abs(sample);
        envelope_ = kKeep * envelope_ + (1 - kKeep) * smooth_;
        return envelope_;
    }

  private:
    double smooth_ = 0;
    double envelope_ = 0;
};

// Active while the envelope is at the threshold or was within the hangover.
class Activity {
  public:
    explicit Activity(double threshold) : threshold_(threshold) {}

    bool after(double envelope) {
        if (envelope >= threshold_) {
            silent_for_ = 0;
            return true;
        }
        return silent_for_++ < kHangover;
    }

  private:
    double threshold_;
    size_t silent_for_ = kHangover;
};

struct Threshold {
    double value;
    Activity activity{value};
    size_t active = 0;  // samples
};

// The level at which it is kMargin above a threshold.
std::optional<double> levelAbove(const std::vector<Threshold>& thresholds, double energy) {
    double level_before = 0, above_before = 0;
    for (size_t i = 0; i < thresholds.size() && thresholds[i].active > 0; ++i) {
        const double level = decibels(energy / static_cast<double>(thresholds[i].active));
        const double above = level - decibels(thresholds[i].value * thresholds[i].value);
        if (above <= kMargin) {
            if (i == 0) return level;
            return level_before + (level - level_before) * (above_before - kMargin) / (above_before - above);
        }
        level_before = level;
        above_before = above;
    }
    return std::nullopt;
}

std::optional<double> wholeLevel(const std::vector<int16_t>& samples) {
    std::vector<Threshold> thresholds;
    for (size_t i = 0; i < kThresholds; ++i) thresholds.push_back({std::ldexp(1, static_cast<int>(i))});
    double energy = 0;
    Envelope envelope;
    for (const double sample : samples) {
        energy += sample * sample;
        const double now = envelope.after(sample);
        for (Threshold& threshold : thresholds) threshold.active += size_t{threshold.activity.after(now)};
    }
    return levelAbove(thresholds, energy);
}

// Rounded, so that the last bits of a processor's powers decide of no sample. At least the lowest threshold.
double thresholdOf(double level) {
    const double amplitude = 32768 * std::pow(10, (level - kMargin) / 20);
    return std::max(std::round(amplitude * kThresholdSteps) / kThresholdSteps, 1.0);
}

}  // namespace

SpeechLevel::SpeechLevel(const std::vector<int16_t>& samples) : whole_(wholeLevel(samples)) {
    if (!whole_) return;
    blocks_.resize((samples.size() + kBlock - 1) / kBlock);
    Envelope envelope;
    Activity activity(thresholdOf(*whole_));
    for (size_t i = 0; i < samples.size(); ++i) {
        const double sample = samples[i];
        if (!activity.after(envelope.after(sample))) continue;
        blocks_[i / kBlock].energy += sample * sample;
        ++blocks_[i / kBlock].count;
    }
}

std::optional<double> SpeechLevel::within(Span span) const {
    Active sum;
    for (size_t block = span.begin; block < std::min(span.end, blocks_.size()); ++block) {
        sum.energy += blocks_[block].energy;
        sum.count += blocks_[block].count;
    }
    if (sum.count < kLeastSamples) return std::nullopt;
    return decibels(sum.energy / static_cast<double>(sum.count));
}

}  // namespace se_host
