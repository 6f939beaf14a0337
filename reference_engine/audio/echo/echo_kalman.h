// The uncertainty of an echo path, and from it the step size of the adaptation: the frequency-domain Kalman filter (Enzner
// and Vary: Frequency-domain adaptive Kalman filter for acoustic echo control in hands-free telephones, Signal Processing
// 86(6), 2006) with the tail in partitions (Kuech, Mabande, Enzner: State-space architecture of the partitioned-block-based
// acoustic echo controller, ICASSP 2014). The frames of the errors overlap, so that each sample is met in several
// blocks: the uncertainty is reduced by that share of what a frame tells. The microphones are close together and receive the
// same loudspeaker and the same talkers, so all share one uncertainty. Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo/far_end.h"

namespace reference_engine {

class EchoKalman {
  public:
    // in: the share of a path's power that may be another after a block; the power that may appear in its first partition.
    void init(float forgetting, float appearing);

    // in: the mean power of the paths, the power of the errors, which partitions learn, and once in how many blocks, up to
    // kPartitionBlocks. out: the steps of those partitions. Their uncertainties are reduced accordingly.
    void update(const EchoGroups (&path_power)[kPartitions], const FarEnd& far_end,
                const EchoBins& error_power, const PartitionSet& learning, int blocks,
                EchoBins (&step)[kPartitions]);

    // A block from which nothing is learnt: expects its residual echo.
    void expect(const FarEnd& far_end);

    // Expected power of the residual echo in the errors' spectra.
    const EchoBins& residual() const { return residual_; }

    // At least the sum of both powers.
    void raise(int partition, const EchoBins& a, const EchoBins& b);
    void restartFrom(const EchoKalman& other);

    const EchoBins& uncertainty(int partition) const { return uncertainty_[partition]; }

  private:
    float forgetting_ = 0;
    float appearing_[kPartitions] = {};
    EchoBins uncertainty_[kPartitions];  // power of the path's unknown part
    EchoBins noise_;                     // power of everything else in the errors
    EchoBins residual_;
};

}  // namespace reference_engine
