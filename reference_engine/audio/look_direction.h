// Chooses the look direction: the one that the client forces, or the one within the sector that is nearest to the source of
// the sound, once it has been so for the hold time. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/direction_search.h"
#include "reference_engine/settings.h"

namespace reference_engine {

class LookDirection {
  public:
    void init() { *this = LookDirection{}; }
    void update(const DirectionSearch& search, const Settings& settings);

    int location() const { return location_; }
    int16_t confidence() const { return confidence_; }

    // True while the sound comes from outside the sector.
    bool soundFromOutside() const { return sound_from_outside_; }

  private:
    void follow(int target, int mode, bool active, int hold_blocks);

    int location_ = 0;
    int16_t confidence_ = 0;
    int rival_ = 0;         // location that is nearer to the source than the present one
    int rival_blocks_ = 0;  // blocks of sound for which it has been so
    bool sound_from_outside_ = false;
};

}  // namespace reference_engine
