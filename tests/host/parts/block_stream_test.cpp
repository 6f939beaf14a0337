#include "host/audio/block_stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "host/audio/input.h"

namespace se_host {
namespace {

// A process that gives microphone 3 plus the far end.
std::vector<int16_t> run(uint32_t quantum, const std::vector<size_t>& calls) {
    Wiring wiring;
    BlockStream stream(wiring, latencyOf(quantum));
    std::vector<int16_t> out;
    int16_t next = 0;
    for (const size_t frames : calls) {
        std::vector<int16_t> captured(frames * 8), far_end(frames), mono(frames);
        for (size_t i = 0; i < frames; ++i) {
            captured[i * 8 + 3] = ++next;
            far_end[i] = 1000;
        }
        stream.run(
            Interleaved<int16_t>{captured.data(), 8}, far_end.data(), frames, mono.data(), [](Block& block) {
                for (size_t i = 0; i < Block::kFrames; ++i) {
                    block.mono[i] =
                        static_cast<int16_t>(block.captured[i * Block::kChannels + 3] + block.far_end[i]);
                }
            });
        out.insert(out.end(), mono.begin(), mono.end());
    }
    return out;
}

void expectDelayed(const std::vector<int16_t>& out, size_t latency) {
    for (size_t i = 0; i < out.size(); ++i) {
        ASSERT_EQ(out[i], i < latency ? 0 : static_cast<int>(i - latency) + 1001) << i;
    }
}

TEST(BlockStream, CallsOfAnyLengthAreDelayedBy159) {
    std::mt19937 random(3);
    std::uniform_int_distribution<size_t> length(0, 500);
    std::vector<size_t> calls;
    for (int i = 0; i < 60; ++i) calls.push_back(length(random));
    expectDelayed(run(0, calls), 159);
}

TEST(BlockStream, CallsOfAQuantumAreDelayedByLess) {
    for (const uint32_t quantum : {1U, 2U, 32U, 64U, 80U, 100U, 160U, 320U, 441U, 480U, 1024U}) {
        expectDelayed(run(quantum, std::vector<size_t>(20, quantum)), latencyOf(quantum));
        std::vector<size_t> multiples;
        for (size_t i = 0; i < 20; ++i) multiples.push_back(quantum * (i % 4));
        expectDelayed(run(quantum, multiples), latencyOf(quantum));
    }
}

TEST(BlockStream, WithoutAFarEndItIsSilent) {
    BlockStream stream(Wiring{}, 0);
    const std::vector<int16_t> captured(Block::kFrames * 8), far_end(Block::kFrames, 5);
    std::vector<int16_t> mono(Block::kFrames);
    const auto give_far_end = [](Block& block) { std::copy_n(block.far_end, Block::kFrames, block.mono); };
    const Interleaved<int16_t> input{captured.data(), 8};
    stream.run(input, far_end.data(), Block::kFrames, mono.data(), give_far_end);
    EXPECT_EQ(mono, far_end);
    stream.run(input, static_cast<const int16_t*>(nullptr), Block::kFrames, mono.data(), give_far_end);
    EXPECT_EQ(mono, std::vector<int16_t>(Block::kFrames));
}

TEST(BlockStream, NeedsTheChannelsOfItsWiring) {
    Wiring wiring;
    EXPECT_EQ(wiring.channels(true), 8U);
    wiring.far_end = 20;
    EXPECT_EQ(wiring.channels(false), 21U);
    EXPECT_EQ(wiring.channels(true), 8U);
    wiring.microphones.fill(Wiring::kNone);
    EXPECT_EQ(wiring.channels(true), 0U);
}

}  // namespace
}  // namespace se_host
