// How long an engine takes to cancel the echo.
#pragma once

#include <optional>
#include <vector>

#include "tools/se_host/sound/echo_alone.h"

namespace se_host {

// Seconds of echo alone until the echo of the last half second of it was lowered by 20 dB or, if that is less, by 3 dB less
// than in the second half of all echo alone. Nothing with less than 2 s of echo alone, or when the second half is lowered by
// less than 6 dB.
std::optional<double> convergenceSeconds(const std::vector<EchoAloneBlock>& blocks);

}  // namespace se_host
