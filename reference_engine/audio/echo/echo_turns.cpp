#include "reference_engine/audio/echo/echo_turns.h"

namespace reference_engine {
namespace {

constexpr int kAlways = 3;  // partitions that learn from each frame

}  // namespace

void EchoTurns::advance(bool all_learn) {
    turn_ = (turn_ + 1) % (2 * (kPartitions - 1));
    for (int p = 0; p < kPartitions; ++p) {
        learning_[static_cast<size_t>(p)] = all_learn || p < kAlways || p % 2 == turn_ % 2;
    }
}

PartitionSet EchoTurns::now() const {
    PartitionSet now;
    now[static_cast<size_t>(constrained())] = true;
    return now;
}

}  // namespace reference_engine
