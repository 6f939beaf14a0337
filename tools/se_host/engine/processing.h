// Processes a recording block by block, as a client does every 10 ms.
// Threads: one; the engine's audio thread for the time of the run.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "tools/se_host/engine/block_times.h"
#include "tools/se_host/engine/cycle_split.h"
#include "tools/se_host/engine/echo_estimate.h"
#include "tools/se_host/sound/recording.h"

namespace se_host {

// Where the engine locates the talker.
struct Direction {
    static constexpr int kDegreesPerLocation = 30;

    uint16_t location;   // azimuth in steps, counter-clockwise seen from above
    int16_t confidence;  // 0 to 32767
};

struct Processed {
    std::vector<int16_t> output;        // mono, as long as the recording before its padding
    std::vector<Direction> directions;  // one a block; empty when the engine was bypassed
    std::vector<EchoEstimate> echo;     // one a block; empty when it was bypassed or estimates none
    double processing_seconds = 0;
    BlockTimes block_times;
    std::optional<CycleShares> cycles;  // when they were asked for
};

// One of the recording's blocks, BLOCK_SIZE samples to `output`. needs: as `process`.
void processOneBlock(const Recording& recording, size_t block, bool bypass, int16_t* output);

struct ProcessingOptions {
    bool bypass = false;  // the raw microphone of channel 7 instead of the engine's output
    std::function<void(size_t block)> after_block;  // not included in the measured time
    bool split_cycles = false;
};

// needs: a started engine.
Processed process(const Recording& recording, const ProcessingOptions& options);

}  // namespace se_host
