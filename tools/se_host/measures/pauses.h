// Noise in the pauses of a recording, found in the recording itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "tools/se_host/measures/span.h"

namespace se_host {

// A block of 10 ms in a pause: energies.
struct PauseBlock {
    size_t index;  // in the recording
    double heard;  // centre microphone
    double left;   // output
};

// The quietest tenth of the microphone's blocks, after the first two seconds, in the order of time. A block counts by the
// energy of the 210 ms around it, because the output lags by up to 100 ms. in: both at 16 kHz, of one length.
std::vector<PauseBlock> pauseBlocks(const std::vector<int16_t>& microphone,
                                    const std::vector<int16_t>& output);

// Energy of the microphone over that of the output in the blocks of `span`. Nothing without at least 10
// of them, or in silence.
std::optional<double> pauseReductionDb(const std::vector<PauseBlock>& pauses, Span span);

}  // namespace se_host
