// Finds the direction from which sound arrives: the steered response power of the phase-transformed microphones (DiBiase: A
// high-accuracy, low-latency technique for talker localization in reverberant environments, Brown University 2000), of the
// sound above the noise and above the residual echo, so that the loudspeaker does not turn the beam away from a talker.
// Threads: init [setup]; update [audio] rt-safe.
#pragma once

#include <cstdint>

#include "reference_engine/audio/direction_track.h"
#include "reference_engine/audio/microphone_spectra.h"

namespace reference_engine {

class DirectionSearch {
  public:
    void init();

    // Forgets all directions; the noise floor is kept.
    void restart();

    // in: the spectra; `echo`, expected power of the echo in each of their bins; `energy` of the block (sum of squares, mean
    // of the microphones), and `gate`, the energy below which it is ignored.
    void update(const MicrophoneSpectra& spectra, const float (&echo)[MicrophoneSpectra::kBins],
                uint64_t energy, uint64_t gate);

    // True when the last block added to the response.
    bool active() const { return active_; }

    // Power from each direction, 0 to 1; 1: all sound comes from there. Averaged over the last tenths of a second of sound.
    const float (&response() const)[kLocations] { return response_; }

    // The location from which the sound comes.
    int source() const { return track_.location(); }

  private:
    static constexpr int kFirstBin = 20;  // 625 Hz: below, the array is too small to resolve directions
    static constexpr int kBins =
        172;  // up to 5970 Hz: above, speech has little energy and spatial aliasing begins

    float weighBins(const MicrophoneSpectra& spectra, const float* echo);
    float loudness(const MicrophoneSpectra& spectra);
    void findPowers(const MicrophoneSpectra& spectra, float (&powers)[kLocations]) const;

    float smoothed_[kBins] = {};      // the power of the microphones, averaged over a few blocks
    float least_[kBins] = {};         // minimum of the smoothed power, in the present interval
    float least_before_[kBins] = {};  // the same in the interval before
    float weight_[kBins] = {};        // 0 for noise, towards 1 for sound far above it

    // What aligns the microphones of the circle with the centre, for half of the locations. For the opposite ones it is
    // the conjugate.
    static constexpr int kSteered = kMicrophones - 1;
    static constexpr int kOpposite = kLocations / 2;
    static_assert(kSteered == kLanes - 2 && kOpposite <= kLanes);
    LaneBin steering_[kBins][kSteered] = {};

    float mean_power_ = 0;  // of all bins together, over the last second
    float response_[kLocations] = {};
    DirectionTrack track_;
    bool active_ = false;
    int floor_age_ = 0;  // blocks in the present interval
};

}  // namespace reference_engine
