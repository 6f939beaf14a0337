// How long an engine takes to cancel the echo, and whether it loses it again.
#pragma once

#include <optional>
#include <vector>

#include "tools/se_host/sound/echo_alone.h"

namespace se_host {

// The goal is to lower the echo by 20 dB or, if that is less, by 3 dB less than in the second half of all echo alone.
struct Convergence {
    double seconds;  // of echo alone until the last half second of it is lowered by the goal
    std::vector<bool>
        reached;  // for each block: the half second of echo alone before it is lowered by the goal
};

// Nothing with less than 2 s of echo alone, or when the second half is lowered by less than 6 dB.
std::optional<Convergence> convergenceOf(const std::vector<EchoAloneBlock>& blocks);

}  // namespace se_host
