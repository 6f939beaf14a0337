#include "tools/scene/scene_checks.h"

#include <cmath>
#include <sstream>
#include <stdexcept>

#include "tools/scene/room.h"

namespace se_scene {

namespace {

struct Range {
    const char* option;
    double value;
    double lowest;
    double highest;
};

[[noreturn]] void refuse(const Range& range) {
    std::ostringstream text;
    text << range.option << " is " << range.value << ", but must be between " << range.lowest << " and "
         << range.highest;
    throw std::invalid_argument(text.str());
}

// Written so that NaN, which is in no interval, is refused.
void check(const Range& range) {
    if (!(range.value >= range.lowest && range.value <= range.highest)) refuse(range);
}

void checkLevel(const char* option, double level) {
    if (level != kSilent) check({option, level, -120, 0});
}

// A source must be inside the room.
void checkInRoom(const char* option, double azimuth_deg, double distance_m, const RoomSize& room) {
    double farthest = 0;
    while (isInRoom(room, atAzimuth(azimuth_deg, farthest + 0.01))) farthest += 0.01;
    check({option, distance_m, 0, farthest});
}

void checkRoom(const SceneOptions& options) {
    const RoomSize& room = options.room;
    check({"reverberation_s", options.reverberation_s, 0.1, 1});
    check({"room.length_m", room.length_m, 3, 30});
    check({"room.width_m", room.width_m, 3, 30});
    check({"room.height_m", room.height_m, 2.2, 10});
    checkInRoom("talker_distance_m", options.talker_azimuth_deg, options.talker_distance_m, room);
    for (double walked = 0; walked < std::abs(options.walk_deg); walked += 1) {
        const double azimuth_deg = options.talker_azimuth_deg + std::copysign(walked, options.walk_deg);
        checkInRoom("talker_distance_m", azimuth_deg, options.talker_distance_m, room);
    }
    if (options.second_talker_azimuth_deg)
        checkInRoom("talker_distance_m", *options.second_talker_azimuth_deg, options.talker_distance_m, room);
    checkInRoom("echo_distance_m", options.echo_azimuth_deg, options.echo_distance_m, room);
    checkInRoom("echo_distance_m", options.echo_azimuth_after_deg, options.echo_distance_m, room);
}

void checkCircle(const std::vector<MicrophonePlace>& circle) {
    if (circle.empty()) return;
    check({"circle's number of microphones", static_cast<double>(circle.size()), kMicrophones - 1,
           kMicrophones - 1});
    for (const MicrophonePlace& place : circle) {
        check({"circle's distance_m", place.distance_m, 0.005, 0.2});
        check({"circle's azimuth_deg", place.azimuth_deg, -360, 360});
    }
}

}  // namespace

void checkOptions(const SceneOptions& options) {
    const Range ranges[] = {
        {"seconds", options.seconds, 0.1, 600},
        {"array_radius_m", options.array_radius_m, 0.005, 0.2},
        {"talker_azimuth_deg", options.talker_azimuth_deg, -360, 360},
        {"talker_distance_m", options.talker_distance_m, 0.25, 10},
        {"talker_start_s", options.talker_start_s, 0, options.seconds},
        {"talker_end_s", options.talker_end_s, options.talker_start_s,
         std::numeric_limits<double>::infinity()},
        {"talker_pitch_hz", options.talker_pitch_hz, 60, 400},
        {"walk_deg", options.walk_deg, -360, 360},
        {"walk_start_s", options.walk_start_s, 0, options.seconds},
        {"walk_s", options.walk_s, 0.1, 600},
        {"second_talker_azimuth_deg", options.second_talker_azimuth_deg.value_or(0), -360, 360},
        {"second_talker_pitch_hz", options.second_talker_pitch_hz, 60, 400},
        {"turn_s", options.turn_s, 0.1, 600},
        {"dead_channel", static_cast<double>(options.dead_channel), 0, 7},
        {"far_end_pitch_hz", options.far_end_pitch_hz, 60, 400},
        {"echo_azimuth_deg", options.echo_azimuth_deg, -360, 360},
        {"echo_azimuth_after_deg", options.echo_azimuth_after_deg, -360, 360},
        {"echo_distance_m", options.echo_distance_m, 0.25, 10},
        {"echo_delay_ms", options.echo_delay_ms, 0, 1000},
        {"echo_drift_ppm", options.echo_drift_ppm, -1000, 1000},
        {"echo_jump_s", options.echo_jump_s.value_or(0), 0, options.seconds},
        {"echo_jump_back_s", options.echo_jump_back_s.value_or(options.seconds),
         options.echo_jump_s.value_or(0), options.seconds},
        {"echo_jump_ms", options.echo_jump_ms, -1000, 1000},
        {"loudspeaker_limit_dbfs", options.loudspeaker_limit_dbfs, -60, 0},
        {"echo_path_change_s", options.echo_path_change_s.value_or(0), 0, options.seconds},
    };
    for (const Range& range : ranges) check(range);
    checkCircle(options.circle);
    if (options.reverberation_s != 0) checkRoom(options);

    checkLevel("talker_level_dbfs", options.talker_level_dbfs);
    checkLevel("sensor_noise_dbfs", options.sensor_noise_dbfs);
    checkLevel("diffuse_noise_dbfs", options.diffuse_noise_dbfs);
    checkLevel("far_end_level_dbfs", options.far_end_level_dbfs);
    checkLevel("echo_level_dbfs", options.echo_level_dbfs);
}

}  // namespace se_scene
