// How much of the way from the robust weights of a beam to the sharp ones is of use. Both pass the look direction unchanged, so
// their difference contains none of it, and the share of it at which the output has the least power leaves the least of
// everything else: a generalised sidelobe canceller of one branch (Griffiths, Jim: An alternative approach to linearly
// constrained adaptive beamforming, IEEE Transactions on Antennas and Propagation 30(1), 1982). The share is at most 1. It is
// that of the beam in the look direction; other beams have the same, and a turn does not change it. Where the microphones'
// own noise is the most, it is 0. Threads: init [setup]; update [audio] rt-safe.
#pragma once

#include "reference_engine/format.h"

namespace reference_engine {

class BeamSharpness {
  public:
    void init() { *this = BeamSharpness{}; }

    // kBlock samples each. `counts`: whether the share follows this block. `most`: the largest share; any number will do.
    void update(const int16_t* robust, const int16_t* difference, bool counts, float most);

    // At the end of the last block and of the one before, 0 to 1.
    float share() const { return share_; }
    float before() const { return before_; }

  private:
    float cross_ = 0, power_ = 0;
    float share_ = 0, before_ = 0;
};

}  // namespace reference_engine
