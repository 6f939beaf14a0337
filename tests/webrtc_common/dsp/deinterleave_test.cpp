// Interleaved capture audio to microphone rows: every sample in its place, and no other memory touched.
#include "webrtc_common/se_wrapper/dsp/deinterleave.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <random>
#include <string>
#include <vector>

#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/dsp.h"
#include "tests/webrtc_common/dsp/each_build.h"

namespace quill::media::se_wrapper {
namespace {

using test::GuardedBuffer;
using Edge = test::GuardedBytes::Edge;

constexpr size_t kRowSamples = kNumMicrophones * BLOCK_SIZE;

// Elements that may be read: up to channel 7 of the last frame.
constexpr size_t inputExtent(size_t channels) {
    return (BLOCK_SIZE - 1) * channels + 8;
}

void fillWithNoise(int16_t* data, size_t count, size_t seed = 1) {
    std::mt19937 random(static_cast<uint32_t>(seed));
    for (size_t i = 0; i < count; ++i) data[i] = static_cast<int16_t>(random() & 0xffffu);
}

// The first difference between the rows and the input's channels; empty when there is none.
std::string misplaced(const int16_t* interleaved, size_t channels, const int16_t* rows) {
    std::vector<int16_t> expected(kRowSamples);
    test::referenceDeinterleave(interleaved, channels, expected.data());
    for (size_t i = 0; i < kRowSamples; ++i) {
        if (rows[i] == expected[i]) continue;
        return "row " + std::to_string(i / BLOCK_SIZE) + ", frame " + std::to_string(i % BLOCK_SIZE) + ", " +
               std::to_string(channels) + " channels";
    }
    return {};
}

class Deinterleave : public test::EachDspBuild {};
INSTANTIATE_FOR_EACH_DSP_BUILD(Deinterleave);

TEST_P(Deinterleave, CrossesChannelsTwoAndThreeAndPutsFourLast) {
    int16_t interleaved[BLOCK_SIZE * 8];
    for (size_t i = 0; i < BLOCK_SIZE * 8; ++i) interleaved[i] = static_cast<int16_t>(1000 * (i % 8) + i / 8);
    int16_t rows[7 * BLOCK_SIZE];
    deinterleaveMicrophones(interleaved, 8, rows);
    const int channels[7] = {1, 3, 2, 5, 6, 7, 4};
    for (size_t r = 0; r < 7; ++r) {
        for (size_t f = 0; f < BLOCK_SIZE; ++f)
            ASSERT_EQ(rows[r * BLOCK_SIZE + f], 1000 * channels[r] + static_cast<int>(f)) << r << " " << f;
    }
}

TEST_P(Deinterleave, WorksForAnyNumberOfChannelsFromEight) {
    for (size_t channels = 8; channels <= 80; ++channels) {
        std::vector<int16_t> interleaved(BLOCK_SIZE * channels);
        fillWithNoise(interleaved.data(), interleaved.size());
        std::vector<int16_t> rows(kRowSamples);
        deinterleaveMicrophones(interleaved.data(), channels, rows.data());
        ASSERT_EQ(misplaced(interleaved.data(), channels, rows.data()), "");
    }
}

TEST_P(Deinterleave, WorksFromAndToEveryAlignment) {
    constexpr size_t kChannels = 9;
    for (size_t from = 0; from < 8; ++from) {
        for (size_t to = 0; to < 8; ++to) {
            std::vector<int16_t> interleaved(BLOCK_SIZE * kChannels + 8);
            fillWithNoise(interleaved.data(), interleaved.size());
            std::vector<int16_t> rows(kRowSamples + 8);
            deinterleaveMicrophones(interleaved.data() + from, kChannels, rows.data() + to);
            ASSERT_EQ(misplaced(interleaved.data() + from, kChannels, rows.data() + to), "");
        }
    }
}

TEST_P(Deinterleave, WritesTheRowsAndNothingElse) {
    std::vector<int16_t> interleaved(BLOCK_SIZE * 8);
    fillWithNoise(interleaved.data(), interleaved.size());
    std::vector<int16_t> rows(kRowSamples + 64, 0x5a5a);
    deinterleaveMicrophones(interleaved.data(), 8, rows.data() + 32);
    EXPECT_EQ(misplaced(interleaved.data(), 8, rows.data() + 32), "");
    for (size_t i = 0; i < 32; ++i) {
        EXPECT_EQ(rows[i], 0x5a5a);
        EXPECT_EQ(rows[32 + kRowSamples + i], 0x5a5a);
    }
}

// The extent ends at a page without access; with odd channel counts it begins at every alignment.
TEST_P(Deinterleave, ReadsNothingAfterChannelSevenOfTheLastFrame) {
    for (size_t channels = 8; channels <= 80; ++channels) {
        const GuardedBuffer<int16_t> interleaved(inputExtent(channels), Edge::kEnd);
        fillWithNoise(interleaved.data(), interleaved.size());
        const GuardedBuffer<int16_t> rows(kRowSamples, Edge::kEnd);
        deinterleaveMicrophones(interleaved.data(), channels, rows.data());
        ASSERT_EQ(misplaced(interleaved.data(), channels, rows.data()), "");
    }
}

TEST_P(Deinterleave, ReadsNothingBeforeTheFirstFrame) {
    for (size_t channels = 8; channels <= 80; ++channels) {
        const GuardedBuffer<int16_t> interleaved(inputExtent(channels), Edge::kBegin);
        fillWithNoise(interleaved.data(), interleaved.size());
        const GuardedBuffer<int16_t> rows(kRowSamples, Edge::kBegin);
        deinterleaveMicrophones(interleaved.data(), channels, rows.data());
        ASSERT_EQ(misplaced(interleaved.data(), channels, rows.data()), "");
    }
}

// Each frame's first eight channels end where a page without access begins.
TEST_P(Deinterleave, ReadsNothingOfTheChannelsAfterTheEighth) {
    const auto page = static_cast<size_t>(::sysconf(_SC_PAGESIZE));
    const size_t size = 2 * page * BLOCK_SIZE;
    void* const mapping = ::mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(mapping, MAP_FAILED);
    for (size_t f = 0; f < BLOCK_SIZE; ++f) {
        char* const open = static_cast<char*>(mapping) + 2 * page * f;
        ASSERT_EQ(::mprotect(open, page, PROT_READ | PROT_WRITE), 0);
        fillWithNoise(reinterpret_cast<int16_t*>(open), page / sizeof(int16_t), f);
    }
    const size_t channels = 2 * page / sizeof(int16_t);
    const int16_t* const interleaved = static_cast<const int16_t*>(mapping) + channels / 2 - 8;
    int16_t rows[kRowSamples];
    deinterleaveMicrophones(interleaved, channels, rows);
    EXPECT_EQ(misplaced(interleaved, channels, rows), "");
    ::munmap(mapping, size);
}

}  // namespace
}  // namespace quill::media::se_wrapper
