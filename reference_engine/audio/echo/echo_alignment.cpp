#include "reference_engine/audio/echo/echo_alignment.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.97f;   // a block
constexpr float kLearned = 10.0f;  // energy of the echo over that of the errors

constexpr int kLead =
    20;  // samples, of the echo after the far end: room for what precedes the strongest sound
constexpr int kLongestLead = 160;  // at which a far end that has not moved may stay
constexpr int kJump = 24;          // samples: a loudspeaker that is moved changes the delay by less

}  // namespace

void EchoAlignment::measure(float heard, float left) {
    heard_ = flushed(kMemory * heard_ + heard);
    left_ = flushed(kMemory * left_ + left);
    if (heard_ > kLearned * left_) learned_blocks_ = std::min(learned_blocks_ + 1, kLearnedBlocks);
}

std::optional<int> EchoAlignment::newDelay(int echo, double far_end) {
    const int lead = static_cast<int>(std::lround(echo - far_end));
    if (!learned()) {
        if (lead >= 0 && lead <= kLongestLead) {
            lead_ = lead;
            return std::nullopt;
        }
        const int delay = std::max(0, echo - kLead);
        lead_ = echo - delay;
        return delay;
    }
    if (lead_ < 0) lead_ = lead;
    // Of a tone every delay in its period is right: paths that match are left alone.
    if (matches() || std::abs(lead - lead_) < kJump) return std::nullopt;
    return std::max(0, echo - lead_);
}

}  // namespace reference_engine
