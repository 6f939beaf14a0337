// An option out of its range is refused by name, with the range.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <stdexcept>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

std::string refusalOf(const SceneOptions& options) {
    try {
        makeScene(options);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

struct Misuse {
    const char* name;
    std::function<void(SceneOptions&)> change;
    const char* refusal;
};

void PrintTo(const Misuse& misuse, std::ostream* out) {
    *out << misuse.name;
}

class OptionOutOfRange : public testing::TestWithParam<Misuse> {};

TEST_P(OptionOutOfRange, IsRefusedByName) {
    SceneOptions options;
    GetParam().change(options);
    EXPECT_EQ(refusalOf(options), GetParam().refusal);
}

const Misuse kMisuses[] = {
    {"NoTime", [](auto& o) { o.seconds = 0; }, "seconds is 0, but must be between 0.1 and 600"},
    {"HugeTime", [](auto& o) { o.seconds = 601; }, "seconds is 601, but must be between 0.1 and 600"},
    {"NoNumber", [](auto& o) { o.seconds = NAN; }, "seconds is nan, but must be between 0.1 and 600"},
    {"NoArray", [](auto& o) { o.array_radius_m = 0; },
     "array_radius_m is 0, but must be between 0.005 and 0.2"},
    {"NoCircle",
     [](auto& o) {
         o.circle = {{0.04, 0}, {0.04, 90}};
     },
     "circle's number of microphones is 2, but must be between 6 and 6"},
    {"CircleTooWide",
     [](auto& o) {
         o.circle.assign(6, {0.3, 0});
     },
     "circle's distance_m is 0.3, but must be between 0.005 and 0.2"},
    {"CircleAzimuth",
     [](auto& o) {
         o.circle.assign(6, {0.05, 400});
     },
     "circle's azimuth_deg is 400, but must be between -360 and 360"},
    {"Azimuth", [](auto& o) { o.talker_azimuth_deg = 361; },
     "talker_azimuth_deg is 361, but must be between -360 and 360"},
    {"InsideTheArray", [](auto& o) { o.talker_distance_m = 0.1; },
     "talker_distance_m is 0.1, but must be between 0.25 and 10"},
    {"StartAfterTheEnd", [](auto& o) { o.talker_start_s = 11; },
     "talker_start_s is 11, but must be between 0 and 10"},
    {"EndBeforeStart", [](auto& o) { o.talker_start_s = 3, o.talker_end_s = 2; },
     "talker_end_s is 2, but must be between 3 and inf"},
    {"TalkerTooLoud", [](auto& o) { o.talker_level_dbfs = 1; },
     "talker_level_dbfs is 1, but must be between -120 and 0"},
    {"SensorTooLoud", [](auto& o) { o.sensor_noise_dbfs = 1; },
     "sensor_noise_dbfs is 1, but must be between -120 and 0"},
    {"DiffuseTooLoud", [](auto& o) { o.diffuse_noise_dbfs = 1; },
     "diffuse_noise_dbfs is 1, but must be between -120 and 0"},
    {"FarEndTooLoud", [](auto& o) { o.far_end_level_dbfs = 1; },
     "far_end_level_dbfs is 1, but must be between -120 and 0"},
    {"EchoTooLoud", [](auto& o) { o.echo_level_dbfs = 1; },
     "echo_level_dbfs is 1, but must be between -120 and 0"},
    {"EchoAzimuth", [](auto& o) { o.echo_azimuth_deg = -400; },
     "echo_azimuth_deg is -400, but must be between -360 and 360"},
    {"EchoAzimuthAfter", [](auto& o) { o.echo_azimuth_after_deg = -400; },
     "echo_azimuth_after_deg is -400, but must be between -360 and 360"},
    {"EchoDistance", [](auto& o) { o.echo_distance_m = 11; },
     "echo_distance_m is 11, but must be between 0.25 and 10"},
    {"PathChange", [](auto& o) { o.echo_path_change_s = -1; },
     "echo_path_change_s is -1, but must be between 0 and 10"},
    {"ShortReverberation", [](auto& o) { o.reverberation_s = 0.05; },
     "reverberation_s is 0.05, but must be between 0.1 and 1"},
    {"NegativeReverberation", [](auto& o) { o.reverberation_s = -0.1; },
     "reverberation_s is -0.1, but must be between 0.1 and 1"},
    {"ShortRoom", [](auto& o) { o.reverberation_s = 0.2, o.room.length_m = 1; },
     "room.length_m is 1, but must be between 3 and 30"},
    {"WideRoom", [](auto& o) { o.reverberation_s = 0.2, o.room.width_m = 31; },
     "room.width_m is 31, but must be between 3 and 30"},
    {"LowRoom", [](auto& o) { o.reverberation_s = 0.2, o.room.height_m = 2; },
     "room.height_m is 2, but must be between 2.2 and 10"},
    {"TalkerPitch", [](auto& o) { o.talker_pitch_hz = 30; },
     "talker_pitch_hz is 30, but must be between 60 and 400"},
    {"SecondTalkerPitch", [](auto& o) { o.second_talker_pitch_hz = 500; },
     "second_talker_pitch_hz is 500, but must be between 60 and 400"},
    {"FarEndPitch", [](auto& o) { o.far_end_pitch_hz = 500; },
     "far_end_pitch_hz is 500, but must be between 60 and 400"},
    {"WalkTooFar", [](auto& o) { o.walk_deg = 400; }, "walk_deg is 400, but must be between -360 and 360"},
    {"WalkTooLate", [](auto& o) { o.walk_start_s = 11; }, "walk_start_s is 11, but must be between 0 and 10"},
    {"WalkTooFast", [](auto& o) { o.walk_s = 0; }, "walk_s is 0, but must be between 0.1 and 600"},
    {"SecondTalker", [](auto& o) { o.second_talker_azimuth_deg = 400; },
     "second_talker_azimuth_deg is 400, but must be between -360 and 360"},
    {"NoTurn", [](auto& o) { o.turn_s = 0; }, "turn_s is 0, but must be between 0.1 and 600"},
    {"NoMicrophone", [](auto& o) { o.dead_channel = 8; }, "dead_channel is 8, but must be between 0 and 7"},
    {"JumpBackFirst", [](auto& o) { o.echo_jump_s = 5, o.echo_jump_back_s = 4; },
     "echo_jump_back_s is 4, but must be between 5 and 10"},
    {"WalksIntoTheWall", [](auto& o) { o.reverberation_s = 0.2, o.talker_distance_m = 3.6, o.walk_deg = 90; },
     "talker_distance_m is 3.6, but must be between 0 and 3.59"},
    {"SecondTalkerBeyondTheWall",
     [](auto& o) { o.reverberation_s = 0.2, o.talker_distance_m = 3.4, o.second_talker_azimuth_deg = 90; },
     "talker_distance_m is 3.4, but must be between 0 and 3.26"},
    {"BeyondTheWall",
     [](auto& o) { o.reverberation_s = 0.2, o.talker_azimuth_deg = 0, o.talker_distance_m = 4; },
     "talker_distance_m is 4, but must be between 0 and 3.68"},
};

INSTANTIATE_TEST_SUITE_P(Each, OptionOutOfRange, testing::ValuesIn(kMisuses),
                         [](const auto& row) { return row.param.name; });

TEST(SceneOptions, TheDefaultsAreAccepted) {
    EXPECT_NO_THROW(makeScene(silentScene(0.1)));
}

}  // namespace
}  // namespace se_scene
