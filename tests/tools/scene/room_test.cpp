// Rooms: reverberation time, and the direct sound.
#include "tools/scene/room.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "tests/tools/scene/test_scenes.h"
#include "tools/scene/image_sources.h"
#include "tools/scene/room_decay.h"

namespace se_scene {
namespace {

const MicrophonePositions kArray = microphonePositions(0.0425);

double reverberationOf(const std::vector<double>& response) {
    std::vector<double> energy;
    for (double sample : response) energy.push_back(sample * sample);
    return reverberationTime(energy, 1.0 / kSampleRate);
}

TEST(ReverberationTime, IsFoundForAnExponentialDecay) {
    std::vector<double> energy;
    for (int i = 0; i < 1000; ++i) energy.push_back(std::pow(10, -6 * i * 0.001 / 0.4));
    EXPECT_NEAR(reverberationTime(energy, 0.001), 0.4, 0.002);
}

class Reverberation : public testing::TestWithParam<double> {};

TEST_P(Reverberation, HasTheGivenDuration) {
    for (const RoomSize& room : {RoomSize{}, RoomSize{5, 4, 2.5}, RoomSize{10, 8, 3}}) {
        const auto responses = roomResponses(room, GetParam(), atAzimuth(60, 1), kArray);
        EXPECT_NEAR(reverberationOf(responses.rows[0]), GetParam(), 0.2 * GetParam()) << room.length_m;
    }
}

INSTANTIATE_TEST_SUITE_P(FromDryToLive, Reverberation, testing::Values(0.15, 0.3, 0.6));

TEST(Room, DirectSoundArrivesFirstAndAsInFreeField) {
    const auto in_room = roomResponses(RoomSize{}, 0.3, atAzimuth(60, 1), kArray);
    const auto outside = freeFieldResponses(atAzimuth(60, 1), kArray);
    const auto loudest = [](const std::vector<double>& row) {
        return std::max_element(row.begin(), row.end()) - row.begin();
    };
    for (size_t m = 0; m < kArray.size(); ++m) {
        EXPECT_EQ(loudest(in_room.rows[m]), loudest(outside.rows[m])) << "microphone " << m;
    }
}

TEST(Room, ReflectsWithBothSidesOfEachWall) {
    // Walls at 0 and 4, listener at 1, source at 3: relative to the listener it is at 2, its images at -4
    // (left wall), 4 (right wall), and farther out after two reflections.
    std::vector<std::pair<double, int>> found;
    for (const AxisImage& image : imagesAlong(3, 4, 1, 7))
        found.emplace_back(image.position, image.reflections);
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (std::vector<std::pair<double, int>>{{-6, 2}, {-4, 1}, {2, 0}, {4, 1}}));
}

TEST(Room, HoldsTheArray) {
    EXPECT_TRUE(isInRoom(RoomSize{}, Point{}));
    EXPECT_FALSE(isInRoom(RoomSize{}, Point{7, 0, 0}));
    EXPECT_FALSE(isInRoom(RoomSize{}, Point{0, -3, 0}));
    EXPECT_FALSE(isInRoom(RoomSize{}, Point{0, 0, 2}));
}

TEST(Room, SoundDecaysAfterTheTalker) {
    SceneOptions options = talkerAlone(3);
    options.talker_end_s = 1.0;
    const Row dry = makeScene(options).talker[0];
    options.reverberation_s = 0.5;
    const Row live = makeScene(options).talker[0];
    EXPECT_EQ(levelDbfs(excerpt(dry, 1.01, 1.1)), kSilent);
    EXPECT_GT(levelDbfs(excerpt(live, 1.01, 1.1)), -60);
    EXPECT_LT(levelDbfs(excerpt(live, 1.6, 3)), -100);
}

}  // namespace
}  // namespace se_scene
