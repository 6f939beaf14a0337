#include "reference_engine/audio/echo/echo_canceller.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/audio/meters.h"
#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr uint64_t kAudibleEnergy = 16000;  // of a block: -70 dBFS
constexpr float kMeterMemory = 0.99f;       // a block

// The shares of the paths' power that may be others after a block: the paths stand still; the shadow expects a change.
constexpr float kForgetting = 2e-5f;
constexpr float kShadowForgetting = 0.02f;

// The powers that may appear in a block, where no path is known.
constexpr float kAppearing = 1e-9f;
constexpr float kShadowAppearing = 1e-3f;

constexpr float kShadowMemory = 0.8f;  // a block, of its errors' energy
constexpr float kBetter = 0.5f;        // energy of the shadow's errors over the main filter's
constexpr int kNeighbours = 4;         // bins on either side over which the difference of both is averaged

constexpr float kUnknownStep = 0.1f;  // a block
constexpr float kKnown = 0.05f;       // of the echo's power: the paths are known

constexpr float kFullScale = 32767;

// Mean of each bin and its neighbours.
FOR_WIDE_REGISTERS void smooth(EchoBins* power) {
    float sums[kEchoBins + 1];
    sums[0] = 0;
    for (int k = 0; k < kEchoBins; ++k) sums[k + 1] = sums[k] + power->value[k];
    const auto meanOf = [&sums](int begin, int end) {
        return (sums[end] - sums[begin]) / static_cast<float>(end - begin);
    };
    constexpr int kFull = 2 * kNeighbours + 1;
    for (int k = kNeighbours; k < kEchoBins - kNeighbours; ++k) {
        power->value[k] = (sums[k - kNeighbours + kFull] - sums[k - kNeighbours]) / kFull;
    }
    for (int k = 0; k < kNeighbours; ++k) {
        power->value[k] = meanOf(0, k + kNeighbours + 1);
        power->value[kEchoBins - 1 - k] = meanOf(kEchoBins - 1 - k - kNeighbours, kEchoBins);
    }
}

FOR_WIDE_REGISTERS void energies(const Lanes* signals, Lanes* sums) {
    Lanes sum = {};
    for (int i = 0; i < kBlock; ++i) sum += signals[i] * signals[i];
    *sums = sum;
}

}  // namespace

void EchoCanceller::init() {
    fft_.init(kEchoFrame);
    far_end_.init();
    delay_.init();
    alignment_.init();
    drift_.init();
    starting_echo_.init();
    expected_ = EchoBins{};
    restart();
    microphones_.clear();
    found_delay_.reset();
    restart_after_move_ = false;
    turns_.init();
    settled_ = false;
    later_ = 0;
    heard_ = left_ = 0;
}

void EchoCanceller::restart() {
    filter_.init();
    first_taps_.init();
    kalman_.init(kForgetting, kAppearing);
    shadow_kalman_.init(kShadowForgetting, kShadowAppearing);
    main_left_ = shadow_left_ = 0;
    unknown_share_ = 1;
}

void EchoCanceller::process(const int16_t* far_end, const MicrophoneBlock& in, MicrophoneBlock& out) {
    far_end_.push(far_end, drift_.step());
    remember(in);
    if (far_end_.silent()) {
        later_ = 0;
        std::copy(in[0], in[0] + kMicrophones * kBlock, out[0]);
        return;
    }
    if (far_end_.transform() && restart_after_move_) restart();
    found_delay_ = delay_.update(far_end_.played(), !settled_ || !alignment_.knowsLead());
    predict();
    subtract();
    output(out);
    const bool audible = energyOf(far_end) > kAudibleEnergy;
    if (audible) measure(in, out);
    if (later_ == 0) {
        learn();
    } else {
        kalman_.expect(far_end_);
    }
    settled_ = settled();
    measureUnknown();
    compareWithShadow();
    if (later_ == 0) constrain();
    expected_ = kalman_.residual();
    starting_echo_.raise(far_end_, audible, expected_);
    followDelay();
}

// The last lane hears what the first microphone does.
void EchoCanceller::remember(const MicrophoneBlock& in) {
    delay_.remember(in[0]);
    const int16_t* rows[kLanes];
    for (int m = 0; m < kMicrophones; ++m) rows[m] = in[m];
    rows[EchoFilter::kShadowLane] = in[EchoFilter::kMainLane];
    laneKernels().gather(rows, kBlock, &microphones_.advance()->lanes);
}

// The second block of two comes with the delay's search, so that both take about the same time. The first blocks are the longest,
// with cold caches: what has no paths yet is not computed.
void EchoCanceller::predict() {
    if (later_ > 0) {
        --later_;
        ++predicted_;
        return;
    }
    later_ = settled_ && !far_end_.moving() && !delay_.wasDue() ? kPartitionBlocks - 1 : 0;
    predicted_ = 1;
    if (filter_.empty()) {
        std::fill(std::begin(echo_), std::end(echo_), Lanes{});
        return;
    }
    filter_.predict(far_end_, later_, spectra_);
    fft_.backward(spectra_, echo_);
}

// errors_: of the newest block; of the whole window, if they are to be learnt from.
void EchoCanceller::subtract() {
    first_taps_.addEcho(far_end_.newest(predicted_), predicted_, echo_ + newest());
    const int begin = later_ == 0 ? kEchoFrame - kEchoWindow : newest();
    const int count = newest() + kBlock - begin;
    Lanes energy;
    laneKernels().subtract(microphones() + kEchoFrame - count, echo_ + begin, count, errors_ + begin,
                           &energy);
    if (later_ == 0) echo_energy_ = energy[EchoFilter::kMainLane];
    energies(echo_ + newest(), &newest_echo_);
    energies(errors_ + newest(), &newest_errors_);
}

void EchoCanceller::output(MicrophoneBlock& out) const {
    const Lanes unity = Lanes{} + 1.0f;
    int16_t of_shadow[kBlock];
    int16_t* rows[kLanes];
    for (int m = 0; m < kMicrophones; ++m) rows[m] = out[m];
    rows[EchoFilter::kShadowLane] = of_shadow;
    laneKernels().quantise(errors_ + newest(), &unity, kFullScale, kBlock, rows);
}

void EchoCanceller::measure(const MicrophoneBlock& in, const MicrophoneBlock& out) {
    heard_ = flushed(heard_ * kMeterMemory);
    left_ = flushed(left_ * kMeterMemory);
    for (int m = 0; m < kMicrophones; ++m) {
        heard_ += static_cast<float>(energyOf(in[m]));
        left_ += static_cast<float>(energyOf(out[m]));
    }
    alignment_.measure(static_cast<float>(energyOf(in[0])), static_cast<float>(energyOf(out[0])));
}

float EchoCanceller::enhancementDb() const {
    return static_cast<float>(decibels((heard_ + 1) / (left_ + 1)));
}

void EchoCanceller::learn() {
    fft_.forward(errors_, filter_.errors());
    EchoBins error_power, shadow_error_power;
    laneKernels().powers(filter_.errors(), kEchoBins, error_power.value, shadow_error_power.value);
    const bool known = alignment_.learned() && unknown_share_ < kKnown;
    turns_.advance(!known || together() > 1);
    const PartitionSet& learning = turns_.learning();
    kalman_.update(filter_.power(), far_end_, error_power, learning, together(), filter_.steps());
    shadow_kalman_.update(filter_.shadowPower(), far_end_, shadow_error_power, learning, together(),
                          filter_.shadowSteps());
    // A move replaces the spectra of the far end.
    const PartitionSet now = far_end_.moving() ? PartitionSet().set() : turns_.now();
    filter_.learn(far_end_, learning, now);
}

void EchoCanceller::constrain() {
    filter_.constrain(turns_.constrained(), fft_, signals_);
    if (turns_.constrained() == 0) first_taps_.set(signals_);
}

// The paths match, in the last blocks and in this one: nothing is to be learnt in haste.
bool EchoCanceller::settled() const {
    const bool pause = energyOf(far_end_.newest(1)) < kAudibleEnergy;
    const bool small = newest_errors_[EchoFilter::kMainLane] < newest_echo_[EchoFilter::kMainLane];
    return alignment_.learned() && alignment_.matches() && (pause || small);
}

// Of a few blocks, at the first microphone.
FOR_WIDE_REGISTERS void EchoCanceller::measureUnknown() {
    Group sum = {};
    for (int g = 0; g < kEchoGroups; ++g) sum += kalman_.residual().groups()[g];
    float left = 0;
    for (int i = 0; i < kGroup; ++i) left += 2 * sum[i] / kEchoFrame;
    if (left > kAudibleEnergy)
        unknown_share_ += kUnknownStep * (left / (left + echo_energy_) - unknown_share_);
}

// The shadow follows a change of the paths at once, but is disturbed by local speech. Where it becomes better, the paths
// have changed: the difference of the two is what the main filter does not know. Where it becomes worse, it restarts from
// the main filter. (Ochiai, Araseki, Ogihara: Echo canceler with two echo path
// models, IEEE Transactions on Communications 25(6), 1977.)
void EchoCanceller::compareWithShadow() {
    const float main = newest_errors_[EchoFilter::kMainLane],
                shadow = newest_errors_[EchoFilter::kShadowLane];
    main_left_ = flushed(kShadowMemory * main_left_ + (1 - kShadowMemory) * main);
    shadow_left_ = flushed(kShadowMemory * shadow_left_ + (1 - kShadowMemory) * shadow);
    if (shadow_left_ < kBetter * main_left_ && main_left_ > kAudibleEnergy) {
        for (int p = 0; p < kPartitions; ++p) {
            EchoBins difference;
            filter_.compareWithShadow(p, &difference);
            smooth(&difference);
            kalman_.raise(p, difference, shadow_kalman_.uncertainty(p));
        }
    } else if (main_left_ < kBetter * shadow_left_ && shadow_left_ > kAudibleEnergy) {
        filter_.restartShadow();
        shadow_kalman_.restartFrom(kalman_);
        shadow_left_ = main_left_;
    }
}

// While the far end moves, its delay says nothing about the clocks.
void EchoCanceller::followDelay() {
    if (far_end_.moving() || !alignment_.learned() || !alignment_.matches()) {
        drift_.hold();
    } else {
        drift_.update(errors_ + newest() - 1, echo_ + newest() - 1, together());
    }
    if (!found_delay_ || far_end_.moving()) return;
    const std::optional<int> delay = alignment_.newDelay(*found_delay_, far_end_.delay());
    if (!delay || *delay == static_cast<int>(far_end_.delay())) return;
    restart_after_move_ = !alignment_.learned();
    far_end_.moveTo(*delay);
}

}  // namespace reference_engine
