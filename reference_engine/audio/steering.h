// The power that arrives from each location, by steered response with phase transform (DiBiase: A high-accuracy, low-latency
// technique for talker localization in reverberant environments, Brown University 2000). Threads: init [setup]; powers is
// rt-safe.
#pragma once

#include "reference_engine/audio/microphone_spectra.h"

namespace reference_engine {

class Steering {
  public:
    static constexpr int kFirstBin = 20;  // 625 Hz: below, the array is too small to resolve directions
    static constexpr int kBins =
        172;  // up to 5970 Hz: above, speech has little energy and spatial aliasing begins

    void init();

    // in: the bins of MicrophoneSpectra from kFirstBin on, a lane a microphone; the weight of each, not all 0. out: power from
    // each location, 0 to 1; 1: all sound comes from there.
    void powers(const LaneBin* bins, const float (&weight)[kBins], float (&powers)[kLocations]) const;

  private:
    // What aligns the microphones of the circle with the centre, for half of the locations. For the opposite ones it is
    // the conjugate.
    static constexpr int kSteered = kMicrophones - 1;
    static constexpr int kOpposite = kLocations / 2;
    static_assert(kSteered == kLanes - 2 && kOpposite <= kLanes);
    LaneBin turns_[kBins][kSteered] = {};
};

}  // namespace reference_engine
