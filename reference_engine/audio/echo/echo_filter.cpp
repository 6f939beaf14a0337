#include "reference_engine/audio/echo/echo_filter.h"

#include <algorithm>
#include <iterator>

namespace reference_engine {
namespace {

// A path that decays ends at 0 and does not reach subnormal numbers, not even squared and with the rounding of a transform.
constexpr float kLeastTap = 1e-9f;

constexpr float kToSamples = 1.0f / kEchoFrame;  // of a transform and back

static_assert(EchoFilter::kMainLane == 0 && EchoFilter::kShadowLane == kLanes - 1,
              "as groupPowers takes them");

}  // namespace

void EchoFilter::init() {
    std::fill(paths_[0], paths_[0] + kPartitions * kEchoBins, LaneBin{});
    std::fill(std::begin(power_), std::end(power_), EchoGroups{});
    std::fill(std::begin(shadow_power_), std::end(shadow_power_), EchoGroups{});
    std::fill(std::begin(energy_), std::end(energy_), 0.0f);
    learns_later_.reset();
    empty_ = true;
}

LanePartition EchoFilter::partition(int p, const FarSpectrum& now, const FarSpectrum& learnt) {
    return {paths_[p],       now.re.value,   now.im.value,         learnt.re.value,
            learnt.im.value, step_[p].value, shadow_step_[p].value};
}

// Those that learn come first. The newest block, and what follows it, is in the frame of the first partition alone.
void EchoFilter::predict(FarEnd& far_end, int later, LaneSpectra& echo) {
    const FarSpectrum& past = far_end.transformPast(later);
    LanePartition partitions[kPartitions];
    int learning = 0, end = kPartitions;
    for (int p = 0; p < kPartitions; ++p) {
        const FarSpectrum& now = p == 0 ? past : far_end.spectrum(p * kPartitionBlocks - later);
        const FarSpectrum& before = far_end.spectrum(p * kPartitionBlocks + 1);
        partitions[learns_later_[static_cast<size_t>(p)] ? learning++ : --end] = partition(p, now, before);
    }
    learns_later_.reset();
    laneKernels().adaptAndPredict(partitions, learning, kPartitions, errors_, kToSamples, kEchoBins, echo);
}

void EchoFilter::adapt(int p, const FarEnd& far_end) {
    const FarSpectrum& x = far_end.spectrum(p * kPartitionBlocks);
    laneKernels().adapt(partition(p, x, x), errors_, kEchoBins);
}

void EchoFilter::learn(const FarEnd& far_end, const PartitionSet& learning, const PartitionSet& now) {
    for (int p = 0; p < kPartitions; ++p) {
        if ((learning & now)[static_cast<size_t>(p)]) adapt(p, far_end);
    }
    learns_later_ = learning & ~now;
    empty_ = false;
}

void EchoFilter::constrain(int partition, LaneFft& fft, LaneSignals& taps) {
    fft.backward(paths_[partition], taps);
    Lanes squares;
    laneKernels().scale(taps, kToSamples, kLeastTap, kPartition, &squares);
    std::fill(taps + kPartition, taps + kEchoFrame, Lanes{});
    fft.forward(taps, paths_[partition]);
    energy_[partition] = 0;
    for (int m = 0; m < kMicrophones; ++m) energy_[partition] += squares[m] / kMicrophones;
    laneKernels().groupPowers(paths_[partition], kEchoBins, power_[partition].data(),
                              shadow_power_[partition].data());
}

void EchoFilter::compareWithShadow(int partition, EchoBins* power) const {
    for (int k = 0; k < kEchoBins; ++k) {
        const LaneBin& bin = paths_[partition][k];
        const float re = bin.re[kShadowLane] - bin.re[kMainLane];
        const float im = bin.im[kShadowLane] - bin.im[kMainLane];
        power->value[k] = re * re + im * im;
    }
}

// What is still to be learnt is then the same, too.
void EchoFilter::restartShadow() {
    for (LaneBin& bin : errors_) {
        bin.re[kShadowLane] = bin.re[kMainLane];
        bin.im[kShadowLane] = bin.im[kMainLane];
    }
    for (int p = 0; p < kPartitions; ++p) {
        shadow_step_[p] = step_[p];
        for (LaneBin& bin : paths_[p]) {
            bin.re[kShadowLane] = bin.re[kMainLane];
            bin.im[kShadowLane] = bin.im[kMainLane];
        }
        shadow_power_[p] = power_[p];
    }
}

}  // namespace reference_engine
