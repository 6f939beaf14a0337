// How much of the sound comes from nowhere in particular: the noise of a room or of many talkers does, a talker nearby does
// not. Found from the flow of sound energy past the array (Pulkki: Spatial sound reproduction with directional audio coding,
// Journal of the Audio Engineering Society 55(6), 2007): from one direction it adds up, from all around it cancels out.
// Threads: init [setup]; update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/microphone_spectra.h"

namespace reference_engine {

class Diffuseness {
  public:
    void init();
    void update(const MicrophoneSpectra& spectra);

    // 0 for a talker, 1 for what surrounds the array; over about the last 100 ms of sound.
    float value() const { return value_; }

  private:
    // 125 Hz to 3 kHz: where most of the energy of speech is, and the array is smaller than the waves.
    static constexpr int kFirstBin = 4;
    static constexpr int kLastBin = 96;

    Lanes to_x_ = {};  // the direction's vector from the microphones' leads
    Lanes to_y_ = {};
    float per_radian_[kLastBin] = {};  // seconds
    Lanes leads_ = {};                 // against the centre, seconds, times the energy; smoothed
    float energy_ = 0;
    float background_ = 0;
    float value_ = 1;
};

}  // namespace reference_engine
