// Finds the direction from which sound arrives: the steered response power of the sound above the noise and above the residual
// echo, less what comes from the loudspeaker's direction, so that the loudspeaker does not turn the beam away from a talker.
// Threads: init [setup]; update [audio] rt-safe.
#pragma once

#include <cstdint>

#include "reference_engine/audio/direction_track.h"
#include "reference_engine/audio/loudspeaker_direction.h"
#include "reference_engine/audio/microphone_spectra.h"
#include "reference_engine/audio/steering.h"

namespace reference_engine {

class DirectionSearch {
  public:
    void init();

    // Forgets all directions; the noise floor is kept.
    void restart();

    // Before each update, while there is echo. in: as LoudspeakerDirection::update.
    void followLoudspeaker(const LaneBin* paths, float unknown_share) {
        loudspeaker_.update(steering_, paths, unknown_share);
    }

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
    static constexpr int kFirstBin = Steering::kFirstBin;
    static constexpr int kBins = Steering::kBins;

    void startFloor(const MicrophoneSpectra& spectra);
    float weighBins(const MicrophoneSpectra& spectra, const float* echo);
    float loudness(const MicrophoneSpectra& spectra);
    float echoShare(const MicrophoneSpectra& spectra) const;

    float smoothed_[kBins] = {};      // the power of the microphones, averaged over a few blocks
    float least_[kBins] = {};         // minimum of the smoothed power, in the present interval
    float least_before_[kBins] = {};  // the same in the interval before
    float weight_[kBins] = {};        // 0 for noise, towards 1 for sound far above it

    Steering steering_;
    LoudspeakerDirection loudspeaker_;
    float mean_power_ = 0;  // of all bins together, over the last second
    float response_[kLocations] = {};
    DirectionTrack track_;
    bool active_ = false;
    int blocks_ = 0;     // up to those that the floor waits for
    int floor_age_ = 0;  // blocks in the present interval
};

}  // namespace reference_engine
