// Follows the difference between the clocks of loudspeaker and microphones, which makes the delay of the echo grow or
// shrink all the time. A prediction that is late by a small delay leaves an error of that delay times its slope: the
// errors are regressed on the slope (a gradient in the delay; Haykin: Adaptive filter theory, 4th edition, 2002, chapter 4),
// and a loop of second order moves the far end. Our own derivation. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo/echo_format.h"

namespace reference_engine {

class EchoDrift {
  public:
    void init() { *this = EchoDrift{}; }

    // in: the errors and the predicted echo of the last block, with one sample before it: kBlock + 1 samples; once in how many
    // blocks the paths learn, up to kPartitionBlocks.
    void update(const Lanes* errors, const Lanes* echo, int blocks);

    // Without an estimate of its own for this block.
    void hold() { step_ = rate_; }

    // Samples by which the delay of the far end is to grow within the next block.
    double step() const { return step_; }

    // Of the microphones' clock towards the loudspeaker's; above 0: the echo gets later.
    float partsPerMillion() const { return static_cast<float>(rate_ * 1e6 / kBlock); }

  private:
    float along_ = 0;  // the errors along the slope of the echo
    float slope_ = 0;  // energy of the slope
    float error_ = 0;  // mean square of the errors
    double rate_ = 0;  // samples a block
    double step_ = 0;
};

}  // namespace reference_engine
