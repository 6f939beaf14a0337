// The echo where only the far end speaks, found in the recording itself.
#pragma once

#include <cstddef>
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

// A block of 10 ms in which only the far end speaks: energies.
struct EchoAloneBlock {
    size_t index;   // in the recording
    double played;  // far end, as much earlier as the echo follows it
    double heard;   // centre microphone
    double left;    // output
};

// In the order of time. in: all at 16 kHz, of one length; the output lags by up to 100 ms.
std::vector<EchoAloneBlock> echoAloneBlocks(const std::vector<int16_t>& far_end,
                                            const std::vector<int16_t>& microphone,
                                            const std::vector<int16_t>& output, const EchoLags& lags);

// Centre microphone over the output, without the blocks in which much more is left than in the others: a soft talker.
// needs: a block.
double echoLoweredDb(const std::vector<EchoAloneBlock>& blocks);

// Far end over the centre microphone.
double echoReturnLossDb(const std::vector<EchoAloneBlock>& blocks);

// Nothing when there are less than 0.5 s of it.
std::optional<EchoAlone> echoAlone(const std::vector<EchoAloneBlock>& blocks);

}  // namespace se_host
