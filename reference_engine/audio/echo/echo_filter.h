// The estimated echo paths from the loudspeaker to each microphone, in partitions of the frequency domain. The last lane
// has a second estimate for the first microphone, the shadow, which adapts by rules of its own. What most partitions learn
// they do when the next echo is predicted, so that the paths, larger than the first caches, are read once for both.
// Threads: init [setup]; the others [audio] rt-safe.
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

    // Nothing has been learnt yet: there is no echo to predict.
    bool empty() const { return empty_; }

    // out: the spectra of the echo in the frame that ends `later` blocks after the last one, but for that of the far end from
    // its newest block on; over kEchoFrame, so that the transform returns samples. needs: later < kPartitionBlocks.
    void predict(FarEnd& far_end, int later, LaneSpectra& echo);

    // To be written before `learn`: the errors' spectra; the step of each bin, for all microphones and for the shadow.
    LaneSpectra& errors() { return errors_; }
    EchoBins (&steps())[kPartitions] { return step_; }
    EchoBins (&shadowSteps())[kPartitions] { return shadow_step_; }

    // Adapts the partitions of `learning`: those of `now` at once, the others in the next block, when its echo is predicted.
    void learn(const FarEnd& far_end, const PartitionSet& learning, const PartitionSet& now);

    // Limits a partition to its taps. out: `taps`, kPartition of kEchoFrame samples.
    void constrain(int partition, LaneFft& fft, LaneSignals& taps);

    // Mean power of each group of bins of a partition, as of its last constraint.
    const EchoGroups (&power() const)[kPartitions] { return power_; }
    const EchoGroups (&shadowPower() const)[kPartitions] { return shadow_power_; }

    // Sum of squares of each partition's taps as of its last constraint, mean of the microphones.
    const float (&energy() const)[kPartitions] { return energy_; }

    const LaneBin* firstPaths() const { return paths_[0]; }

    // Power of the difference between the first microphone's path and its shadow.
    void compareWithShadow(int partition, EchoBins* power) const;
    void restartShadow();

  private:
    LanePartition partition(int p, const FarSpectrum& now, const FarSpectrum& learnt);
    void adapt(int p, const FarEnd& far_end);

    LaneSpectra errors_ = {};
    EchoBins step_[kPartitions];
    EchoBins shadow_step_[kPartitions];
    PartitionSet learns_later_;
    bool empty_ = true;
    LaneBin paths_[kPartitions][kEchoBins] = {};
    EchoGroups power_[kPartitions];
    EchoGroups shadow_power_[kPartitions];
    float energy_[kPartitions] = {};
};

}  // namespace reference_engine
