// Which partitions of the echo paths learn from a frame, and which one is constrained after it. While the paths are not known
// all of them learn in each block: the repeated use of overlapping frames is what makes the filter fast. Once they are known, the
// later ones learn in every second block: half of them from each frame, or all where every second block has a frame.
// Threads: init [setup]; advance [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo/echo_format.h"

namespace reference_engine {

class EchoTurns {
  public:
    void init() { *this = EchoTurns{}; }

    // To the next frame.
    void advance(bool all_learn);

    const PartitionSet& learning() const { return learning_; }

    // The first one every second time, as its taps are used in the time domain.
    int constrained() const { return turn_ % 2 == 0 ? 0 : 1 + turn_ / 2; }

    // Those that have to learn at once: the paths of the constrained one are used before the next echo is predicted.
    PartitionSet now() const;

  private:
    int turn_ = 0;  // of the constraints
    PartitionSet learning_;
};

}  // namespace reference_engine
