// One capture block with the engine or bypassed; a function of this file replaces the engine.
#include "webrtc_common/se_wrapper/engine/process_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "kernel_check/problem/guarded_buffer.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {
namespace {

constexpr int kFrames = BLOCK_SIZE;

// The engine's input, and its output.
struct Engine {
    int calls = 0;
    int16_t rows[7][kFrames] = {};
    int16_t* out = nullptr;
    bool rows_are_contiguous = false;
    int16_t answer = 0;
};
Engine engine;

void processMicrophones(int16_t* first, int16_t* others, int16_t* out) {
    ++engine.calls;
    engine.rows_are_contiguous = others == first + kFrames;
    std::memcpy(engine.rows[0], first, sizeof(engine.rows[0]));
    std::memcpy(engine.rows[1], others, 6 * sizeof(engine.rows[0]));
    engine.out = out;
    for (int i = 0; i < kFrames; ++i) out[i] = static_cast<int16_t>(engine.answer + i);
}

class ProcessBlock : public ::testing::Test {
  protected:
    ProcessBlock() {
        engine = {};
        MMIfProcessMicrophones = processMicrophones;
    }

    // A block in which channel c of frame f is 200 c + f, so that no two samples of ten channels are equal.
    static std::vector<int16_t> block(size_t channels) {
        std::vector<int16_t> result(kFrames * channels);
        for (size_t i = 0; i < result.size(); ++i) {
            result[i] = static_cast<int16_t>(200 * (i % channels) + i / channels);
        }
        return result;
    }

    static void expectMicrophonesOfTheBlock() {
        const int channels[7] = {1, 3, 2, 5, 6, 7, 4};
        for (int r = 0; r < 7; ++r) {
            for (int f = 0; f < kFrames; ++f)
                ASSERT_EQ(engine.rows[r][f], 200 * channels[r] + f) << r << " " << f;
        }
    }

    int16_t output_[kFrames] = {};
};

TEST_F(ProcessBlock, OfEightChannelsGivesTheEngineChannelsOneToSevenAndDropsChannelZero) {
    processBlock(8, block(8).data(), kFrames, output_, true);
    EXPECT_EQ(engine.calls, 1);
    expectMicrophonesOfTheBlock();
}

TEST_F(ProcessBlock, OfTenChannelsIgnoresChannelsEightAndNine) {
    processBlock(10, block(10).data(), kFrames, output_, true);
    EXPECT_EQ(engine.calls, 1);
    expectMicrophonesOfTheBlock();
}

TEST_F(ProcessBlock, PassesOneRowThenTheSixAfterIt) {
    processBlock(8, block(8).data(), kFrames, output_, true);
    EXPECT_TRUE(engine.rows_are_contiguous);
}

TEST_F(ProcessBlock, LetsTheEngineWriteTheOutput) {
    engine.answer = 1234;
    processBlock(8, block(8).data(), kFrames, output_, true);
    EXPECT_EQ(engine.out, output_);
    for (int i = 0; i < kFrames; ++i) ASSERT_EQ(output_[i], 1234 + i);
}

TEST_F(ProcessBlock, WhenBypassedOutputsChannelSevenAndDoesNotCallTheEngine) {
    processBlock(10, block(10).data(), kFrames, output_, false);
    EXPECT_EQ(engine.calls, 0);
    for (int f = 0; f < kFrames; ++f) ASSERT_EQ(output_[f], 1400 + f);
}

TEST_F(ProcessBlock, WhenBypassedNeedsNoEngine) {
    MMIfProcessMicrophones = nullptr;
    processBlock(8, block(8).data(), kFrames, output_, false);
    EXPECT_EQ(output_[kFrames - 1], 1400 + kFrames - 1);
}

TEST_F(ProcessBlock, WhenBypassedWritesOneBlockOfOutput) {
    const test::GuardedBuffer<int16_t> output(kFrames);
    processBlock(8, block(8).data(), kFrames, output.data(), false);
    EXPECT_EQ(output[kFrames - 1], 1400 + kFrames - 1);
}

TEST_F(ProcessBlock, CopiesTheEndsOfTheRangeUnchanged) {
    std::vector<int16_t> interleaved(kFrames * 8, INT16_MAX);
    std::fill_n(interleaved.begin(), kFrames / 2 * 8, static_cast<int16_t>(INT16_MIN));
    processBlock(8, interleaved.data(), kFrames, output_, true);
    for (const auto& row : engine.rows) {
        EXPECT_EQ(row[kFrames / 2 - 1], INT16_MIN);
        EXPECT_EQ(row[kFrames / 2], INT16_MAX);
    }
}

TEST_F(ProcessBlock, LeavesItsInputAlone) {
    const std::vector<int16_t> before = block(9);
    const std::vector<int16_t> interleaved = before;
    processBlock(9, interleaved.data(), kFrames, output_, true);
    EXPECT_EQ(interleaved, before);
}

TEST_F(ProcessBlock, ReadsNothingOutsideTheBlock) {
    for (const uint32_t channels : {8u, 9u, 13u, 16u, 33u}) {
        for (const auto edge : {test::GuardedBytes::Edge::kBegin, test::GuardedBytes::Edge::kEnd}) {
            const std::vector<int16_t> samples = block(channels);
            const test::GuardedBuffer<int16_t> interleaved(samples.size(), edge);
            std::copy(samples.begin(), samples.end(), interleaved.begin());
            processBlock(channels, interleaved.data(), kFrames, output_, false);
            ASSERT_EQ(output_[kFrames - 1], 1400 + kFrames - 1);
        }
    }
}

using ProcessBlockDeathTest = ProcessBlock;

TEST_F(ProcessBlockDeathTest, RefusesABlockOf320Frames) {
    EXPECT_FATAL_RECORD(processBlock(8, nullptr, 2 * kFrames, output_, true), "check",
                        (RecordSite{"webrtc_common/se_wrapper", 641}),
                        "Check failed: BLOCK_SIZE == samples (160 vs. 320) ");
}

TEST_F(ProcessBlockDeathTest, RefusesSevenChannels) {
    EXPECT_FATAL_RECORD(processBlock(7, nullptr, kFrames, output_, true), "check",
                        (RecordSite{"webrtc_common/se_wrapper", 646}),
                        "Check failed: skipChannels > -1 (-1 vs. -1) ");
}

TEST_F(ProcessBlockDeathTest, RefusesNoChannels) {
    EXPECT_FATAL_RECORD(processBlock(0, nullptr, kFrames, output_, true), "check",
                        (RecordSite{"webrtc_common/se_wrapper", 646}),
                        "Check failed: skipChannels > -1 (-8 vs. -1) ");
}

// The number of channels after the eighth is a signed 32-bit number.
TEST_F(ProcessBlockDeathTest, RefusesMoreChannelsThanASignedNumberHolds) {
    EXPECT_FATAL_RECORD(processBlock(0x80000008u, nullptr, kFrames, output_, true), "check",
                        (RecordSite{"webrtc_common/se_wrapper", 646}),
                        "Check failed: skipChannels > -1 (-2147483648 vs. -1) ");
    EXPECT_FATAL_RECORD(processBlock(0xffffffffu, nullptr, kFrames, output_, true), "check",
                        (RecordSite{"webrtc_common/se_wrapper", 646}),
                        "Check failed: skipChannels > -1 (-9 vs. -1) ");
}

TEST_F(ProcessBlockDeathTest, ChecksTheBlockSizeFirst) {
    EXPECT_FATAL_RECORD(processBlock(7, nullptr, 0, output_, true), "check",
                        (RecordSite{"webrtc_common/se_wrapper", 641}),
                        "Check failed: BLOCK_SIZE == samples (160 vs. 0) ");
}

// With the checks filtered out it goes on with one block: the input and the output have no more.
TEST_F(ProcessBlock, GoesOnWithOneBlockWhateverTheCountSaysWhenChecksAreFilteredOut) {
    const test::ScopedLogCapture log;
    setLogThreshold("check", 0);
    const std::vector<int16_t> samples = block(8);
    const test::GuardedBuffer<int16_t> interleaved(samples.size());
    std::copy(samples.begin(), samples.end(), interleaved.begin());
    const test::GuardedBuffer<int16_t> output(kFrames);
    processBlock(8, interleaved.data(), 2 * kFrames, output.data(), true);
    EXPECT_EQ(engine.calls, 1);
    expectMicrophonesOfTheBlock();
    EXPECT_TRUE(log.records().empty());
}

// Frame f then begins at 7 f, and its channel 7 is channel 0 of the next.
TEST_F(ProcessBlock, GoesOnPastTheEndsOfSevenChannelFramesWhenChecksAreFilteredOut) {
    const test::ScopedLogCapture log;
    setLogThreshold("check", 0);
    const test::GuardedBuffer<int16_t> interleaved((kFrames - 1) * 7 + 8);
    for (size_t i = 0; i < interleaved.size(); ++i) interleaved[i] = static_cast<int16_t>(i);
    processBlock(7, interleaved.data(), kFrames, output_, false);
    for (int f = 0; f < kFrames; ++f) ASSERT_EQ(output_[f], 7 * f + 7);
    EXPECT_TRUE(log.records().empty());
}

}  // namespace
}  // namespace quill::media::se_wrapper
