// The recording: channel order, rounding, and the sum of its parts.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

// Row m holds m + 1, the far end 8, in units of one step.
std::vector<int16_t> oneFrame() {
    MicrophoneRows rows;
    for (int m = 0; m < kMicrophones; ++m) rows.push_back({static_cast<float>(m + 1) / 32768});
    return interleave(rows, {8.0F / 32768});
}

TEST(Recording, CrossesItsChannelsAsTheDeviceDoes) {
    EXPECT_EQ(oneFrame(), (std::vector<int16_t>{8, 1, 3, 2, 7, 4, 5, 6}));
}

TEST(Recording, WithoutFarEndChannelZeroIsSilent) {
    const auto recording = interleave(MicrophoneRows(kMicrophones, Row(2, 0.5F)), {});
    ASSERT_EQ(recording.size(), 2U * kChannels);
    EXPECT_EQ(recording[0], 0);
    EXPECT_EQ(recording[1], 16384);
    EXPECT_EQ(recording[kChannels], 0);
}

TEST(Recording, RoundsToNearest) {
    MicrophoneRows rows(kMicrophones, Row(1));
    rows[0][0] = 1.4F / 32768;
    rows[2][0] = 1.6F / 32768;
    rows[1][0] = -1.6F / 32768;
    const auto recording = interleave(rows, {});
    EXPECT_EQ(recording[1], 1);
    EXPECT_EQ(recording[2], 2);
    EXPECT_EQ(recording[3], -2);
}

TEST(Recording, Saturates) {
    MicrophoneRows rows(kMicrophones, Row(1));
    rows[0][0] = 1.0F;
    rows[2][0] = -1.5F;
    const auto recording = interleave(rows, {2.0F});
    EXPECT_EQ(recording[0], 32767);
    EXPECT_EQ(recording[1], 32767);
    EXPECT_EQ(recording[2], -32768);
}

TEST(Recording, MixtureIsTheSumOfTheParts) {
    const Scene scene = makeScene(fullScene(1));
    const MicrophoneRows mixture = scene.mixture();
    for (size_t m = 0; m < kMicrophones; ++m) {
        for (size_t i = 0; i < scene.frames; ++i) {
            ASSERT_EQ(mixture[m][i], scene.talker[m][i] + scene.noise[m][i] + scene.echo[m][i]);
        }
    }
}

TEST(Recording, RecordedPartsAddUpToTheRecordingWithinTheirRounding) {
    const Scene scene = makeScene(fullScene(1));
    const auto whole = interleave(scene.mixture(), scene.far_end);
    const auto talker = interleave(scene.talker, {});
    const auto noise = interleave(scene.noise, {});
    const auto echo = interleave(scene.echo, scene.far_end);
    for (size_t i = 0; i < whole.size(); ++i) {
        ASSERT_LE(std::abs(whole[i] - talker[i] - noise[i] - echo[i]), 2) << "sample " << i;
    }
}

TEST(Recording, HasTheGivenDuration) {
    const Scene scene = makeScene(fullScene(0.75));
    EXPECT_EQ(scene.frames, 12000U);
    for (const MicrophoneRows* part : {&scene.talker, &scene.noise, &scene.echo}) {
        ASSERT_EQ(part->size(), static_cast<size_t>(kMicrophones));
        for (const Row& row : *part) EXPECT_EQ(row.size(), 12000U);
    }
    EXPECT_EQ(scene.far_end.size(), 12000U);
}

}  // namespace
}  // namespace se_scene
