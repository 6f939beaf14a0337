// Follows the talkers: of all paths through the directions, the one from which most of the sound has come so far, where
// each turn has a cost (Viterbi: Error bounds for convolutional codes and an asymptotically optimum decoding algorithm,
// IEEE Transactions on Information Theory 13(2), 1967). A clear sound is followed within a few blocks, a faint one later.
// To the next direction, as for a talker that walks, and to one that had sound lately, as for two talkers in turn, the cost
// is low. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/format.h"

namespace reference_engine {

class DirectionTrack {
  public:
    // in: power from each direction in a block, 0 to 1; `weight` of the block, 0 to 1; whether location() is that of a
    // loudspeaker which is heard: to turn away from it costs less.
    void update(const float (&power)[kLocations], float weight, bool at_loudspeaker);

    // Where the best path ends.
    int location() const { return location_; }

  private:
    int location_ = 0;
    float score_[kLocations] = {};  // of the best path to each; that to location() has 0, all others less
    float share_[kLocations] = {};  // of the recent sound
};

}  // namespace reference_engine
