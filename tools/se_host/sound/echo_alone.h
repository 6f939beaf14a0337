// The echo where only the far end speaks, found in the recording itself.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/health/echo_lag.h"

namespace se_host {

struct EchoAlone {
    double seconds;         // in which the far end is heard and nothing else
    double return_loss_db;  // far end over the centre microphone, in this time
    std::optional<double>
        lowered_db;  // centre microphone over the output, the same without the first two seconds
};

// Nothing when there are less than 0.5 s of it. in: all at 16 kHz, of one length; the output lags by up to 100 ms.
std::optional<EchoAlone> echoAlone(const std::vector<int16_t>& far_end,
                                   const std::vector<int16_t>& microphone, const std::vector<int16_t>& output,
                                   const EchoLags& lags);

}  // namespace se_host
