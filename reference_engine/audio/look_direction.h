// Decides where the beam looks: where the client forces it, or where the search hears most within the sector,
// once another direction has been ahead for a while. Threads: update [audio] rt-safe.
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

    // True while the strongest sound comes from outside the sector.
    bool soundFromOutside() const { return sound_from_outside_; }

  private:
    void follow(const float (&response)[kLocations], int mode, bool active, int hold_blocks);

    int location_ = 0;
    int16_t confidence_ = 0;
    int rival_ = 0;         // direction that is ahead of the present one
    int rival_blocks_ = 0;  // for how many blocks of sound it has been
    bool sound_from_outside_ = false;
};

}  // namespace reference_engine
