#include "tools/se_host/processing.h"

#include <boost/timer/progress_display.hpp>
#include <chrono>
#include <iostream>
#include <optional>

#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

Direction currentDirection() {
    Direction direction{};
    se::MMIfGetCurrentLocation(&direction.location, &direction.confidence);
    return direction;
}

}  // namespace

// The far end first: the engine must know what the loudspeaker plays before it hears it.
void processOneBlock(const Recording& recording, size_t block, bool bypass, int16_t* output) {
    const size_t first = block * se::BLOCK_SIZE;
    const auto channels = static_cast<uint32_t>(recording.microphones.channels);
    int16_t played[se::BLOCK_SIZE];
    se::RcvIfProcessReceivePath(recording.far_end.data() + first, played);
    se::processBlock(channels, recording.microphones.samples.data() + first * channels, se::BLOCK_SIZE,
                     output, !bypass);
}

Processed process(const Recording& recording, bool bypass, bool show_progress) {
    const size_t blocks = recording.blocks();
    Processed result;
    result.output.resize(blocks * se::BLOCK_SIZE);
    result.directions.reserve(blocks);
    std::optional<boost::timer::progress_display> progress;
    if (show_progress) progress.emplace(blocks, std::cerr, "");

    const auto start = std::chrono::steady_clock::now();
    for (size_t block = 0; block < blocks; ++block) {
        processOneBlock(recording, block, bypass, result.output.data() + block * se::BLOCK_SIZE);
        if (!bypass) result.directions.push_back(currentDirection());
        if (progress) ++*progress;
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

    result.processing_seconds = elapsed.count();
    result.output.resize(recording.frames);
    return result;
}

}  // namespace se_host
