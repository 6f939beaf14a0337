#include "tools/se_host/sound/echo_alone.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "tools/se_host/sound/echo_share.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace se_host {
namespace {

using Samples = std::vector<int16_t>;

constexpr size_t kBlock = quill::media::se_wrapper::BLOCK_SIZE;
constexpr size_t kConvergence = 200;  // blocks in which an engine adapts to the room
constexpr size_t kLeastBlocks = 50;
constexpr ptrdiff_t kMargin = 20;  // blocks: half of the time over which a share is taken

// Echo alone has the largest shares: 0.98 with a near loudspeaker, less the more the room reverberates.
constexpr double kLargestShare = 0.95;  // quantile that stands for it
constexpr double kBelowLargest = 0.94;  // of it: a talker 12 dB below the echo takes more away
constexpr double kLeastShare = 0.5;
constexpr double kTalkerStandsOut = 20;  // dB

// Zeros outside of the sound.
double powerAt(const Samples& samples, ptrdiff_t start) {
    double power = 0;
    for (ptrdiff_t i = std::max<ptrdiff_t>(start, 0); i < start + static_cast<ptrdiff_t>(kBlock); ++i) {
        if (i >= static_cast<ptrdiff_t>(samples.size())) break;
        const double sample = samples[static_cast<size_t>(i)];
        power += sample * sample;
    }
    return power;
}

// Silence counts as a single bit, so that a ratio is finite.
double ratioDb(double above, double below) {
    return 10 * std::log10(std::max(above, 1.0) / std::max(below, 1.0));
}

double quantileOf(std::vector<double> values, double quantile) {
    const auto at =
        values.begin() + static_cast<ptrdiff_t>(quantile * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

// The blocks around which nothing else is heard.
std::vector<size_t> blocksOfEchoAlone(const std::vector<double>& shares) {
    const double largest = quantileOf(shares, kLargestShare);
    std::vector<size_t> blocks;
    if (largest < kLeastShare) return blocks;
    ptrdiff_t mixed = -kMargin;  // the last block in which something else is heard
    const auto count = static_cast<ptrdiff_t>(shares.size());
    for (ptrdiff_t block = 0; block < count; ++block) {
        if (shares[static_cast<size_t>(block)] < kBelowLargest * largest) {
            mixed = block;
            while (!blocks.empty() && static_cast<ptrdiff_t>(blocks.back()) >= block - kMargin)
                blocks.pop_back();
        } else if (block > mixed + kMargin) {
            blocks.push_back(static_cast<size_t>(block));
        }
    }
    return blocks;
}

}  // namespace

std::vector<EchoAloneBlock> echoAloneBlocks(const Samples& far_end, const Samples& microphone,
                                            const Samples& output, const EchoLags& lags) {
    std::vector<EchoAloneBlock> blocks;
    for (const size_t index : blocksOfEchoAlone(echoShares(far_end, microphone, lags))) {
        const auto start = static_cast<ptrdiff_t>(index * kBlock);
        blocks.push_back({index, powerAt(far_end, start - lags.at(index * kBlock)),
                          powerAt(microphone, start), powerAt(output, start)});
    }
    return blocks;
}

double echoLoweredDb(const std::vector<EchoAloneBlock>& blocks) {
    std::vector<double> each;
    each.reserve(blocks.size());
    for (const EchoAloneBlock& block : blocks) each.push_back(ratioDb(block.heard, block.left));
    const double least = quantileOf(each, 0.5) - kTalkerStandsOut;
    double heard = 0, left = 0;
    for (size_t i = 0; i < blocks.size(); ++i) {
        if (each[i] < least) continue;
        heard += blocks[i].heard;
        left += blocks[i].left;
    }
    return ratioDb(heard, left);
}

double echoReturnLossDb(const std::vector<EchoAloneBlock>& blocks) {
    double played = 0, heard = 0;
    for (const EchoAloneBlock& block : blocks) {
        played += block.played;
        heard += block.heard;
    }
    return ratioDb(played, heard);
}

std::optional<EchoAlone> echoAlone(const std::vector<EchoAloneBlock>& blocks) {
    if (blocks.size() < kLeastBlocks) return std::nullopt;
    std::vector<EchoAloneBlock> converged;
    for (const EchoAloneBlock& block : blocks) {
        if (block.index >= kConvergence) converged.push_back(block);
    }
    EchoAlone echo{static_cast<double>(blocks.size()) / 100, echoReturnLossDb(blocks), {}};
    if (converged.size() >= kLeastBlocks) echo.lowered_db = echoLoweredDb(converged);
    return echo;
}

}  // namespace se_host
