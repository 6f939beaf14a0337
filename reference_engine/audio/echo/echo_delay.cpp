#include "reference_engine/audio/echo/echo_delay.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.92f;   // an update: an average over half a second
constexpr float kCertain = 0.12f;  // of the mean coherence; blocks without an echo reach half of it by chance
constexpr float kOther = 0.6f;     // of it, at most, at any lag that is no neighbour
constexpr int kCertainTimes = 2;   // that a lag must be the best; then it is looked at again as often
constexpr float kLoud = 1e7f;      // mean power of a bin: a far end of -46 dBFS
constexpr float kAudible = 1e3f;   // the same of the microphone: above the rounding of samples
constexpr float kTiny = 1e-3f;     // against division by zero; samples are integers

}  // namespace

void EchoDelay::init() {
    fft_.init(kEchoFrame);
    peak_fft_.init(kPeakFrame);
    microphone_.clear();
    for (int i = 0; i < kEchoFrame; ++i) {
        window_[i] = static_cast<float>(0.5 - 0.5 * cosine(2 * M_PI * (i + 0.5) / kEchoFrame));
    }
    std::fill(std::begin(far_end_), std::end(far_end_), Phases{});
    std::fill(std::begin(cross_), std::end(cross_), Phases{});
    std::fill(std::begin(coherence_), std::end(coherence_), 0.0f);
    wait_ = newest_ = best_ = best_times_ = 0;
}

FOR_WIDE_REGISTERS void EchoDelay::findPhases(const int16_t* frame, Phases* phases) {
    constexpr int kBins = kGroups * kLanes;
    alignas(LaneBin) float samples[kEchoFrame];
    for (int i = 0; i < kEchoFrame; ++i) samples[i] = window_[i] * frame[i];
    EchoBins re, im;
    fft_.forward(samples, re.value, im.value);
    float* const phase_re = reinterpret_cast<float*>(phases->re);
    float* const phase_im = reinterpret_cast<float*>(phases->im);
    float powers[kBins];
    for (int i = 0; i < kBins; ++i) {
        const float of_re = re.value[kFirstBin + kBinStep * i];
        const float of_im = im.value[kFirstBin + kBinStep * i];
        powers[i] = of_re * of_re + of_im * of_im;
        const float to_unit = 1 / std::sqrt(powers[i] + kTiny);
        phase_re[i] = of_re * to_unit;
        phase_im[i] = of_im * to_unit;
    }
    float total = 0;
    for (const float power : powers) total += power;
    phases->power = total / kBins;
}

std::optional<int> EchoDelay::update(const int16_t* far_end, bool search) {
    wait_ = (wait_ + 1) % kLagBlocks;
    if (wait_ != 0) return std::nullopt;
    newest_ = (newest_ + kLags - 1) % kLags;
    findPhases(far_end, &far_end_[newest_]);
    if (!search) return std::nullopt;
    Phases microphone;
    findPhases(microphone_.values(), &microphone);

    if (microphone.power < kAudible) return std::nullopt;
    const int lag = strongestLag(microphone);
    best_times_ = lag == best_ && coherence_[lag] > kCertain && isUnique(lag) ? best_times_ + 1 : 0;
    best_ = lag;
    if (best_times_ == 0 || best_times_ % kCertainTimes != 0) return std::nullopt;
    return std::max(0, lag * kLag + peakOf(cross_[lag]));
}

int EchoDelay::strongestLag(const Phases& microphone) {
    for (int lag = 0; lag < kLags; ++lag) {
        const Phases& far_end = far_end_[(newest_ + lag) % kLags];
        if (far_end.power < kLoud) continue;
        Phases& cross = cross_[lag];
        Lanes power;
        laneKernels().correlate(far_end.re, far_end.im, microphone.re, microphone.im, kMemory, kGroups,
                                cross.re, cross.im, &power);
        coherence_[lag] = 0;
        for (int i = 0; i < kLanes; ++i) coherence_[lag] += power[i] / (kGroups * kLanes);
    }
    return static_cast<int>(std::max_element(std::begin(coherence_), std::end(coherence_)) -
                            std::begin(coherence_));
}

// A sound that repeats itself, such as a tone, is coherent at many lags.
bool EchoDelay::isUnique(int best) const {
    for (int lag = 0; lag < kLags; ++lag) {
        if (std::abs(lag - best) > 1 && coherence_[lag] > kOther * coherence_[best]) return false;
    }
    return true;
}

// The delay within the lag: that of the highest peak of the correlation.
int EchoDelay::peakOf(const Phases& cross) const {
    std::complex<float> bins[kPeakFrame / 2 + 1] = {};
    for (int g = 0; g < kGroups; ++g) {
        for (int i = 0; i < kLanes; ++i) {
            bins[kFirstBin / kBinStep + g * kLanes + i] = {cross.re[g][i], cross.im[g][i]};
        }
    }
    float correlation[kPeakFrame];
    peak_fft_.backward(bins, correlation);
    const auto quieter = [](float a, float b) { return std::abs(a) < std::abs(b); };
    const auto peak = std::max_element(std::begin(correlation), std::end(correlation), quieter);
    const int place = static_cast<int>(peak - std::begin(correlation));
    return place < kPeakFrame / 2 ? place : place - kPeakFrame;
}

}  // namespace reference_engine
