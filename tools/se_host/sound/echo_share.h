// How much of the microphone's sound is echo: the share of its power that is coherent with the far end (Carter: Coherence
// and time delay estimation, Proceedings of the IEEE 75(2), 1987), over three quarters of a second.
#pragma once

#include <cstdint>
#include <vector>

#include "host/health/echo_lag.h"

namespace se_host {

// For each block of 10 ms, 0 to 1. in: both at 16 kHz, of one length.
std::vector<double> echoShares(const std::vector<int16_t>& far_end, const std::vector<int16_t>& microphone,
                               const EchoLags& lags);

}  // namespace se_host
