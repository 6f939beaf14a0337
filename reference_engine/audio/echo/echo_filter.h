// The estimated echo paths from the loudspeaker to each microphone, in partitions of the frequency domain. The last lane
// has a second estimate for the first microphone, the shadow, which adapts by rules of its own. Threads: init [setup];
// the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo/far_end.h"
#include "reference_engine/lanes/lane_fft.h"

namespace reference_engine {

class EchoFilter {
  public:
    static constexpr int kMainLane = 0;
    static constexpr int kShadowLane = kMicrophones;
    static_assert(kShadowLane < kLanes);

    void init();

    // out: the spectra of the echo through some partitions.
    void predict(const FarEnd& far_end, int first, int count, LaneSpectra& echo) const;

    // in: the errors' spectra; the step of each bin, for all microphones and for the shadow.
    void adapt(int partition, const FarSpectrum& far_end, const LaneSpectra& errors, const EchoBins& step,
               const EchoBins& shadow_step);

    // Limits a partition to its taps. out: `taps`, kPartition of kEchoFrame samples.
    void constrain(int partition, LaneFft& fft, LaneSignals& taps);

    // Power of each bin of a partition, as of its last adaptation.
    const EchoBins (&power() const)[kPartitions] { return power_; }
    const EchoBins (&shadowPower() const)[kPartitions] { return shadow_power_; }

    // Sum of squares of each partition's taps as of its last constraint, mean of the microphones.
    const float (&energy() const)[kPartitions] { return energy_; }

    // Power of the difference between the first microphone's path and its shadow.
    void compareWithShadow(int partition, EchoBins* power) const;
    void restartShadow();

  private:
    LaneBin paths_[kPartitions][kEchoBins] = {};
    EchoBins power_[kPartitions];
    EchoBins shadow_power_[kPartitions];
    float energy_[kPartitions] = {};
};

}  // namespace reference_engine
