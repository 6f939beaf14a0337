// The sound: that of the library, later by its latency, whatever the lengths of the calls are.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "host/se_host.h"
#include "tests/pipewire/plugin_under_test.h"
#include "tests/pipewire/sound.h"

namespace se_pipewire_test {
namespace {

constexpr size_t kFrames = 12000;
constexpr size_t kLatency = 159;  // of calls of any length
constexpr float kPoison = 7;

// What the plugin makes of the sound in calls of these lengths, repeated.
Planes run(Plugin& plugin, const Planes& captured, const Planes& played, size_t output_channels,
           const std::vector<uint32_t>& lengths) {
    Planes output(output_channels, std::vector<float>(captured[0].size(), kPoison));
    size_t turn = 0;
    for (size_t begin = 0; begin < captured[0].size(); ++turn) {
        const auto frames = static_cast<uint32_t>(
            std::min<size_t>(lengths[turn % lengths.size()], captured[0].size() - begin));
        auto in = pointers(captured, begin);
        auto far = pointers(played, begin);
        auto out = pointers(output, begin);
        EXPECT_EQ(plugin.methods().run(plugin.object(), in.data(), far.data(), out.data(), frames), 0);
        begin += frames;
    }
    return output;
}

// What the library makes of it, in blocks of the engine.
std::vector<float> cleaned(const Planes& captured, const std::vector<float>* far_end,
                           int far_end_channel = -1) {
    se_host_options_t options = SE_HOST_OPTIONS_INIT;
    options.quantum = SE_HOST_BLOCK;
    options.far_end_channel = far_end_channel;
    se_host_t* host = nullptr;
    char why[256];
    EXPECT_EQ(se_host_open(&options, &host, why, sizeof why), SE_HOST_OK) << why;
    std::vector<float> output(captured[0].size());
    for (size_t begin = 0; begin + SE_HOST_BLOCK <= output.size(); begin += SE_HOST_BLOCK) {
        const auto in = pointers(captured, begin);
        const float* const far = far_end == nullptr ? nullptr : far_end->data() + begin;
        se_host_process_planes_f32(host, in.data(), static_cast<uint32_t>(in.size()), far, SE_HOST_BLOCK,
                                   output.data() + begin);
    }
    se_host_close(host);
    return output;
}

std::vector<float> mean(const std::vector<float>& left, const std::vector<float>& right) {
    std::vector<float> both(left.size());
    for (size_t i = 0; i < both.size(); ++i) both[i] = 0.5F * (left[i] + right[i]);
    return both;
}

// Bit for bit, and not silence.
void expectDelayed(const std::vector<float>& output, const std::vector<float>& reference) {
    ASSERT_TRUE(std::any_of(reference.begin(), reference.end(), [](float sample) { return sample != 0; }));
    const auto end = reference.end() - static_cast<ptrdiff_t>(kLatency);
    const auto differing = std::mismatch(reference.begin(), end, output.begin() + kLatency);
    EXPECT_EQ(differing.first, end) << "from frame " << differing.first - reference.begin();
}

class PipeWireRun : public testing::TestWithParam<std::vector<uint32_t>> {};

// 160 is usual; fewer come after buffer.play_delay, and others with other values of node.latency and min-quantum.
TEST_P(PipeWireRun, GivesTheSoundOfTheLibraryInCallsOfAnyLength) {
    const Planes captured = noise(8, kFrames);
    const Planes played = noise(8, kFrames, 7);
    const std::vector<float> far_end = mean(played[0], played[1]);
    const std::vector<float> reference = cleaned(captured, &far_end);
    Plugin plugin;
    ASSERT_EQ(plugin.init(), 0);
    expectDelayed(run(plugin, captured, played, 8, GetParam())[0], reference);
}

INSTANTIATE_TEST_SUITE_P(Each, PipeWireRun,
                         testing::Values(std::vector<uint32_t>{160}, std::vector<uint32_t>{480},
                                         std::vector<uint32_t>{1}, std::vector<uint32_t>{341, 342},
                                         std::vector<uint32_t>{160, 37, 0, 159, 1, 1024, 1025, 2049},
                                         std::vector<uint32_t>{8192}));

// At version 2 of the interface all streams have the format of the capture.
TEST(PipeWireOutput, IsInTheFirstChannelAndTheOthersAreSilent) {
    Plugin plugin;
    ASSERT_EQ(plugin.init(), 0);
    const Planes output = run(plugin, noise(8, kFrames), noise(8, kFrames, 7), 8, {160});
    EXPECT_NE(*std::max_element(output[0].begin(), output[0].end()), 0);
    for (size_t channel = 1; channel < output.size(); ++channel) {
        EXPECT_EQ(output[channel], std::vector<float>(kFrames)) << channel;
    }
}

TEST(PipeWireOutput, MayHaveOneChannelAtVersion3) {
    const Planes captured = noise(8, kFrames);
    const Planes played = noise(1, kFrames, 7);
    const std::vector<float> reference = cleaned(captured, &played[0]);
    Plugin plugin;
    ASSERT_EQ(plugin.init2({}, format(8), format(1), format(1)), 0);
    expectDelayed(run(plugin, captured, played, 1, {480})[0], reference);
}

TEST(PipeWireFarEnd, IsTheMeanOfFrontLeftAndFrontRight) {
    const Planes captured = noise(8, kFrames);
    const Planes played = noise(3, kFrames, 7);
    const std::vector<float> far_end = mean(played[1], played[2]);
    const std::vector<float> reference = cleaned(captured, &far_end);
    Plugin plugin;
    const auto stereo = format(3, {SPA_AUDIO_CHANNEL_LFE, SPA_AUDIO_CHANNEL_FL, SPA_AUDIO_CHANNEL_FR});
    ASSERT_EQ(plugin.init2({}, format(8), format(1), stereo), 0);
    expectDelayed(run(plugin, captured, played, 1, {1500})[0], reference);
}

TEST(PipeWireFarEnd, IsACapturedChannelWhenTheMapNamesOne) {
    const Planes captured = noise(8, kFrames);
    const std::vector<float> reference = cleaned(captured, nullptr, 0);
    Plugin plugin;
    ASSERT_EQ(plugin.init({{"se.channel-map", "[ 1 2 3 4 5 6 7 0 ]"}}), 0);
    expectDelayed(run(plugin, captured, noise(8, kFrames, 7), 8, {160})[0], reference);
}

TEST(PipeWireRunTwice, CallsOnStreamsThatPausedGoOn) {
    Plugin plugin;
    ASSERT_EQ(plugin.init(), 0);
    const Planes captured = noise(8, kFrames);
    run(plugin, captured, captured, 8, {160});
    EXPECT_EQ(plugin.methods().deactivate(plugin.object()), 0);
    EXPECT_EQ(plugin.methods().activate(plugin.object()), 0);
    run(plugin, captured, captured, 8, {160});
    EXPECT_EQ(plugin.log(), "");
}

}  // namespace
}  // namespace se_pipewire_test
