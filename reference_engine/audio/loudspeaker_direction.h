// Where the loudspeaker stands, from the echo paths to the microphones. What it distorts no echo canceller removes, and the
// search would take it for a talker: while there is echo, most of what comes from the loudspeaker does not count. Some of
// it does, so that a talker beside the loudspeaker is found, too. Own derivation. Threads: rt-safe.
#pragma once

#include "reference_engine/audio/steering.h"

namespace reference_engine {

class LoudspeakerDirection {
  public:
    void init() { *this = LoudspeakerDirection{}; }

    // in: the spectra of the echo paths' first partition, kEchoBins; how much of the paths is unknown, 0 to 1.
    void update(const Steering& steering, const LaneBin* paths, float unknown_share);

    bool known() const { return known_; }
    int location() const;  // needs: known

    // Lowers the powers from each location of a block by those of the loudspeaker. in: the share of the removed echo in the
    // sound of the microphones, 0 to 1. needs: known.
    void remove(float echo_share, float (&powers)[kLocations]) const;

  private:
    bool known_ = false;
    int age_ = 0;                    // blocks since it was found
    float powers_[kLocations] = {};  // of the paths, less their mean
    float variance_ = 0;             // sum of their squares
};

}  // namespace reference_engine
