// Decides when the far end moves: before the paths are known, so that the echo begins with the filter; afterwards when the
// bulk delay jumps, as it does when a buffer of the host runs empty: the paths are still right then, at another delay.
// Threads: [audio] rt-safe.
#pragma once

#include <optional>

#include "reference_engine/format.h"

namespace reference_engine {

class EchoAlignment {
  public:
    void init() { *this = EchoAlignment{}; }

    // in: energies of the microphone and of the error, of a block in which the far end is active.
    void measure(float heard, float left);

    // Whether the paths have been found at least once, and whether they match now.
    bool learned() const { return learned_blocks_ >= kLearnedBlocks; }
    bool matches() const { return heard_ > kMatching * left_; }

    // Whether it is known by how much the echo follows the far end.
    bool knowsLead() const { return lead_ >= 0; }

    // in: delay of the echo and of the far end, in samples. The new delay of the far end, if it is to move.
    std::optional<int> newDelay(int echo, double far_end);

  private:
    static constexpr int kLearnedBlocks = 31;
    static constexpr float kMatching = 4;  // 6 dB

    float heard_ = 0;
    float left_ = 0;
    int learned_blocks_ = 0;
    int lead_ = -1;  // samples by which the echo follows the aligned far end; -1: not known
};

}  // namespace reference_engine
