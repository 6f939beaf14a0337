#include "tools/se_host/engine/processing.h"

#include <chrono>
#include <optional>

#include "host/audio/engine_block.h"
#include "host/engine/engine_stage.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

Direction directionAfter(size_t block) {
    Direction direction{};
    const auto call = [&] { se::MMIfGetCurrentLocation(&direction.location, &direction.confidence); };
    callEngine(EngineStage::kProcessing, call, block);
    return direction;
}

}  // namespace

void processOneBlock(const Recording& recording, size_t block, bool bypass, int16_t* output) {
    const size_t first = block * se::BLOCK_SIZE;
    const auto channels = static_cast<uint32_t>(recording.microphones.channels);
    const auto call = [&] {
        processInEngine(channels, recording.microphones.samples.data() + first * channels,
                        recording.far_end.data() + first, bypass, output);
    };
    callEngine(EngineStage::kProcessing, call, block);
}

Processed process(const Recording& recording, const ProcessingOptions& options) {
    using Clock = std::chrono::steady_clock;
    const size_t blocks = recording.blocks();
    Processed result;
    result.output.resize(blocks * se::BLOCK_SIZE);
    result.directions.reserve(blocks);
    std::optional<CycleSplit> split;
    if (options.split_cycles) split.emplace(blocks);

    std::optional<EchoEstimator> echo;
    if (!options.bypass) echo.emplace();
    std::vector<double> seconds;
    seconds.reserve(blocks);
    for (size_t block = 0; block < blocks; ++block) {
        if (split) split->lookAtClock();
        const auto start = Clock::now();
        if (split) split->beginBlock();
        processOneBlock(recording, block, options.bypass, result.output.data() + block * se::BLOCK_SIZE);
        if (split) split->endBlock();
        seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
        if (!options.bypass) result.directions.push_back(directionAfter(block));
        if (echo) echo->afterBlock(block);
        if (options.after_block) options.after_block(block);
    }

    result.block_times = blockTimesOf(seconds);
    result.processing_seconds = result.block_times.mean * static_cast<double>(blocks);
    if (echo) result.echo = echo->result();
    if (split) result.cycles = split->finish();
    result.output.resize(recording.frames);
    return result;
}

}  // namespace se_host
