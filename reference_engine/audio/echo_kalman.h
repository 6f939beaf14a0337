// The uncertainty of the echo paths, and from it the step size of the adaptation: the frequency-domain
// Kalman filter (Enzner and Vary: Frequency-domain adaptive Kalman filter for acoustic echo control in
// hands-free telephones, Signal Processing 86(6), 2006) with the tail in partitions (Kuech, Mabande, Enzner:
// State-space architecture of the partitioned-block-based acoustic echo controller, ICASSP 2014). The
// microphones are close together and receive the same loudspeaker and the same talkers, so all share one
// uncertainty. Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo_format.h"

namespace reference_engine {

class EchoKalman {
  public:
    void init();

    // The paths may have changed since the last block. in: energy of each partition's taps;
    // `mismatch`, whether the errors show such a change.
    void predict(const float (&path_energy)[kPartitions], bool mismatch);

    // in: the far end's spectrum for each partition; power of the errors, mean of the microphones.
    void observe(const EchoSpectrum* const (&far_end)[kPartitions], const float (&error_power)[kEchoBins]);

    // out: factor on the errors' spectra that gives the correction of a partition; its uncertainty is
    // reduced accordingly.
    void learn(int partition, const EchoSpectrum& far_end, EchoSpectrum* gain);

    // Expected power of the residual echo in the errors' spectra.
    const float (&residual() const)[kEchoBins] { return residual_; }

  private:
    float uncertainty_[kPartitions][kEchoBins] = {};  // power of the path's unknown part
    float noise_[kEchoBins] = {};                     // of everything but echo, in the errors' spectra
    float residual_[kEchoBins] = {};
};

}  // namespace reference_engine
