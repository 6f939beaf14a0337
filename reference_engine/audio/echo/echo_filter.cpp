#include "reference_engine/audio/echo/echo_filter.h"

#include <algorithm>
#include <iterator>

namespace reference_engine {
namespace {

// A path that decays ends at 0 and does not reach subnormal numbers, not even squared and with the rounding of a transform.
constexpr float kLeastTap = 1e-9f;

}  // namespace

void EchoFilter::init() {
    std::fill(paths_[0], paths_[0] + kPartitions * kEchoBins, LaneBin{});
    std::fill(std::begin(power_), std::end(power_), EchoBins{});
    std::fill(std::begin(shadow_power_), std::end(shadow_power_), EchoBins{});
    std::fill(std::begin(energy_), std::end(energy_), 0.0f);
}

void EchoFilter::predict(const FarEnd& far_end, int first, int count, LaneSpectra& echo) const {
    FarBins spectra[kPartitions];
    for (int p = 0; p < count; ++p) {
        const FarSpectrum& x = far_end.spectrum((first + p) * kPartitionBlocks);
        spectra[p] = {x.re.value, x.im.value};
    }
    laneKernels().accumulate(paths_[first], spectra, count, kEchoBins, echo);
}

void EchoFilter::adapt(int partition, const FarSpectrum& far_end, const LaneSpectra& errors,
                       const EchoBins& step, const EchoBins& shadow_step) {
    laneKernels().adapt(paths_[partition], far_end.re.value, far_end.im.value, errors, step.value,
                        shadow_step.value, kEchoBins, power_[partition].value,
                        shadow_power_[partition].value);
}

void EchoFilter::constrain(int partition, LaneFft& fft, LaneSignals& taps) {
    fft.backward(paths_[partition], taps);
    Lanes squares;
    laneKernels().scale(taps, 1.0f / kEchoFrame, kLeastTap, kPartition, &squares);
    std::fill(taps + kPartition, taps + kEchoFrame, Lanes{});
    fft.forward(taps, paths_[partition]);
    energy_[partition] = 0;
    for (int m = 0; m < kMicrophones; ++m) energy_[partition] += squares[m] / kMicrophones;
}

void EchoFilter::compareWithShadow(int partition, EchoBins* power) const {
    for (int k = 0; k < kEchoBins; ++k) {
        const LaneBin& bin = paths_[partition][k];
        const float re = bin.re[kShadowLane] - bin.re[kMainLane];
        const float im = bin.im[kShadowLane] - bin.im[kMainLane];
        power->value[k] = re * re + im * im;
    }
}

void EchoFilter::restartShadow() {
    for (int p = 0; p < kPartitions; ++p) {
        for (LaneBin& bin : paths_[p]) {
            bin.re[kShadowLane] = bin.re[kMainLane];
            bin.im[kShadowLane] = bin.im[kMainLane];
        }
        shadow_power_[p] = power_[p];
    }
}

}  // namespace reference_engine
