// Sound: any number of frames and channels give what calls of 160 frames give.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

constexpr const char* kReference = "se_lib_beamv1.14";
constexpr int kBlock = SE_HOST_BLOCK;

std::vector<int16_t> later(const std::vector<int16_t>& sound, size_t frames) {
    std::vector<int16_t> delayed(sound.size());
    std::copy(sound.begin(), sound.end() - static_cast<std::ptrdiff_t>(frames),
              delayed.begin() + static_cast<std::ptrdiff_t>(frames));
    return delayed;
}

Change quantum(uint32_t frames) {
    return [frames](se_host_options_t& options) { options.quantum = frames; };
}

struct Quantum {
    uint32_t frames;
    uint32_t latency;
};

TEST(ProcessHost, TheLatencyFollowsFromTheQuantum) {
    for (const Quantum& q :
         {Quantum{0, 159}, {1, 159}, {160, 0}, {480, 0}, {64, 128}, {1024, 128}, {441, 159}, {80, 80}}) {
        const Opened host(kReference, quantum(q.frames));
        EXPECT_EQ(se_host_latency(host), q.latency) << q.frames;
    }
}

TEST(ProcessHost, AnyNumberOfFramesGivesTheSameBitsLater) {
    const Sound sound(kBlock * 120);
    std::vector<int16_t> blocks;
    {
        const Opened host(kReference, quantum(160));
        blocks = process(host, sound, kBlock);
    }
    for (const size_t frames :
         {size_t{1}, size_t{7}, size_t{64}, size_t{161}, size_t{480}, size_t{1024}, sound.frames()}) {
        const Opened host(kReference);
        EXPECT_EQ(process(host, sound, frames), later(blocks, 159)) << frames;
    }
    const Opened host(kReference, quantum(64));
    EXPECT_EQ(process(host, sound, 64), later(blocks, 128));
}

TEST(ProcessHost, FloatAndPlanesGiveTheSameSound) {
    const Sound sound(kBlock * 50);
    std::vector<int16_t> expected;
    {
        const Opened host(kReference, quantum(160));
        expected = process(host, sound, kBlock);
    }
    std::vector<float> captured(sound.captured.begin(), sound.captured.end()),
        far_end(sound.far_end.begin(), sound.far_end.end());
    for (float& sample : captured) sample /= 32768.0f;
    for (float& sample : far_end) sample /= 32768.0f;
    std::vector<float> mono(sound.frames());
    std::vector<float> expected_floats(expected.begin(), expected.end());
    for (float& sample : expected_floats) sample /= 32768.0f;
    {
        const Opened host(kReference, quantum(160));
        EXPECT_EQ(se_host_process_f32(host, captured.data(), 8, far_end.data(), sound.frames(), mono.data()),
                  SE_HOST_OK);
        EXPECT_EQ(mono, expected_floats);
    }
    std::vector<std::vector<float>> planes(8, std::vector<float>(sound.frames()));
    const float* pointers[8];
    for (size_t channel = 0; channel < 8; ++channel) {
        for (size_t frame = 0; frame < sound.frames(); ++frame)
            planes[channel][frame] = captured[frame * 8 + channel];
        pointers[channel] = planes[channel].data();
    }
    const Opened host(kReference, quantum(160));
    EXPECT_EQ(se_host_process_planes_f32(host, pointers, 8, far_end.data(), sound.frames(), mono.data()),
              SE_HOST_OK);
    EXPECT_EQ(mono, expected_floats);
}

// The rows of the engine hold the channels 1, 3, 2, 5, 6, 7, 4.
TEST(ProcessHost, TheMapSaysWhichChannelIsWhichMicrophone) {
    ScriptedEngine scripted;
    const Opened host("test_engines/full", [](se_host_options_t& options) {
        const int32_t channels[] = {9, 0, 4, 2, -1, 7, 5};
        std::copy(std::begin(channels), std::end(channels), options.microphones);
        options.quantum = 160;
    });
    std::vector<int16_t> captured(kBlock * 10), mono(kBlock);
    for (size_t i = 0; i < captured.size(); ++i) captured[i] = static_cast<int16_t>(i);
    ASSERT_EQ(se_host_process_i16(host, captured.data(), 10, nullptr, kBlock, mono.data()), SE_HOST_OK);
    const int row_channels[] = {9, 4, 0, -1, 7, 5, 2};
    for (int row = 0; row < 7; ++row) {
        const int channel = row_channels[row];
        for (int frame = 0; frame < kBlock; ++frame) {
            ASSERT_EQ(scripted.engine->microphones()[row * kBlock + frame],
                      channel < 0 ? 0 : frame * 10 + channel)
                << row;
        }
    }
}

TEST(ProcessHost, AChannelCanBeTheFarEnd) {
    const Sound sound(kBlock * 50);
    std::vector<int16_t> expected;
    {
        const Opened host(kReference, quantum(160));
        expected = process(host, sound, kBlock);
    }
    const Opened host(kReference, [](se_host_options_t& options) {
        options.quantum = 160;
        options.far_end_channel = 0;
    });
    Sound wired = sound;
    for (size_t frame = 0; frame < sound.frames(); ++frame) wired.captured[frame * 8] = sound.far_end[frame];
    std::vector<int16_t> mono(sound.frames());
    EXPECT_EQ(se_host_process_i16(host, wired.captured.data(), 8, nullptr, sound.frames(), mono.data()),
              SE_HOST_OK);
    EXPECT_EQ(mono, expected);
}

TEST(ProcessHost, BypassedTheOutputIsMicrophone7) {
    const Opened host(kReference, quantum(160));
    se_host_bypass(host, 1);
    const Sound sound(kBlock * 4);
    const std::vector<int16_t> mono = process(host, sound, kBlock);
    for (size_t frame = 0; frame < sound.frames(); ++frame)
        ASSERT_EQ(mono[frame], sound.captured[frame * 8 + 7]);
    EXPECT_EQ(host.health().bypassed_blocks, 4U);
    EXPECT_EQ(host.health().blocks, 0U);
}

TEST(ProcessHost, RefusesWhatCannotBeMeantAndLeavesTheOutput) {
    const Opened host(kReference, quantum(160));
    const std::vector<int16_t> captured(kBlock * 8);
    std::vector<int16_t> mono(kBlock, 77);
    const std::vector<int16_t> untouched = mono;
    EXPECT_EQ(se_host_process_i16(nullptr, captured.data(), 8, nullptr, kBlock, mono.data()),
              SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_process_i16(host, nullptr, 8, nullptr, kBlock, mono.data()), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_process_i16(host, captured.data(), 8, nullptr, kBlock, nullptr), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_process_i16(host, captured.data(), 7, nullptr, kBlock, mono.data()),
              SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_process_i16(host, captured.data(), 1025, nullptr, kBlock, mono.data()),
              SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(se_host_process_i16(host, captured.data(), 8, nullptr, 100, mono.data()), SE_HOST_BAD_ARGUMENT);
    const float* planes[8] = {};
    EXPECT_EQ(se_host_process_planes_f32(host, planes, 8, nullptr, 0, nullptr), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(mono, untouched);
    EXPECT_EQ(host.health().frames, 0U);
}

TEST(ProcessHost, NoFramesAreNothing) {
    const Opened host(kReference);
    const int16_t captured = 0;
    int16_t mono = 5;
    EXPECT_EQ(se_host_process_i16(host, &captured, 8, nullptr, 0, &mono), SE_HOST_OK);
    EXPECT_EQ(mono, 5);
}

}  // namespace
}  // namespace se_host_library_test
