// Simulated recordings of the eight-channel device: a talker, noise, reverberation and far-end echo at the
// microphones of the array, deterministic for a seed. The parts are kept separate, so that code that measures an
// engine can distinguish speech, noise and echo.
// Threads: any; nothing is shared. It does not depend on the engine or the wrapper.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace se_scene {

inline constexpr int kSampleRate = 16000;  // Hz
inline constexpr int kChannels = 8;        // channel 0: far-end loopback; 1 to 7: microphones
inline constexpr int kMicrophones = 7;

// Channel of the recording that carries microphone m (m = 0 the centre, 1 to 6 the circle at azimuths 0, 60,
// ... 300 degrees). Kept on purpose: the device crosses its channels.
inline constexpr int kChannelOfMicrophone[kMicrophones] = {1, 3, 2, 5, 6, 7, 4};

enum class NoiseColour { kWhite, kPink, kBabble };  // babble: many voices around the array

// Levels are root mean squares in decibels relative to full scale 1.0: a sine that fills the scale has -3.
inline constexpr double kSilent = -1000.0;  // a level in dBFS that means "none"

// A shoebox; the array stands near its middle at table height.
struct RoomSize {
    double length_m = 7.0;
    double width_m = 6.0;
    double height_m = 2.8;
};

// A microphone in the plane of the array, relative to the centre microphone.
struct MicrophonePlace {
    double distance_m;
    double azimuth_deg;
};

struct SceneOptions {
    double seconds = 10.0;
    uint32_t seed = 1;
    double array_radius_m = 0.0425;
    std::vector<MicrophonePlace> circle;  // microphones 1 to 6; empty: a circle of that radius

    std::vector<float> speech;       // mono, 16 kHz, full scale 1.0, repeated as needed; empty: synthesised
    double talker_pitch_hz = 120;    // of the synthesised voice; its formants follow
    double talker_azimuth_deg = 60;  // counter-clockwise seen from above, 0 along microphone 1
    double talker_distance_m = 1.0;
    double talker_level_dbfs =
        -26;                    // root mean square over the talker's active time at the centre microphone
    double talker_start_s = 0;  // the talker speaks from here ...
    double talker_end_s = std::numeric_limits<double>::infinity();  // ... to here; the sound rings on after

    double walk_deg = 0;      // the talker walks by this angle around the array ...
    double walk_start_s = 0;  // ... from here ...
    double walk_s = 2;        // ... within this time

    std::optional<double>
        second_talker_azimuth_deg;            // another talker, as far and as loud; they speak in turn
    std::vector<float> second_talker_speech;  // as `speech`
    double second_talker_pitch_hz = 170;
    double turn_s = 3;  // each speaks for this long

    int dead_channel = 0;  // of the recording, 1 to 7: this microphone is silent; 0: none

    double sensor_noise_dbfs = -65;       // white, independent at each microphone
    double diffuse_noise_dbfs = kSilent;  // from all around
    NoiseColour diffuse_noise_colour = NoiseColour::kPink;
    std::vector<std::vector<float>> babble_speech;  // as `speech`, of voice after voice; empty: synthesised

    double reverberation_s = 0;  // time in which the room's sound falls by 60 dB; 0: free field
    RoomSize room;               // used only with reverberation

    std::vector<float> far_end_speech;  // as `speech`, for the loudspeaker; empty: synthesised, another voice
    double far_end_pitch_hz = 200;      // of the synthesised voice
    double far_end_level_dbfs = -26;    // of what the loudspeaker plays, over the active time
    double echo_level_dbfs = kSilent;   // at the centre microphone, over the active time; kSilent: no far end
    double echo_azimuth_deg = 200;      // of the loudspeaker, which is beside the array
    double echo_distance_m = 0.3;
    std::optional<double> echo_path_change_s;  // then the loudspeaker moves; its level stays
    double echo_azimuth_after_deg = 320;
    double echo_delay_ms = 0;                // of the playback, beside the way through the air
    double echo_drift_ppm = 0;               // by which the loudspeaker's clock is slower: the delay grows
    std::optional<double> echo_jump_s;       // then the delay changes at once ...
    double echo_jump_ms = 0;                 // ... by this much ...
    std::optional<double> echo_jump_back_s;  // ... until here
    double loudspeaker_limit_dbfs = 0;       // peak beyond which it clips
};

// Rows of samples at full scale 1.0, one a microphone, all of `frames` samples.
using MicrophoneRows = std::vector<std::vector<float>>;

struct Scene {
    size_t frames = 0;
    MicrophoneRows talker;             // the talkers at the microphones, reflections included
    std::vector<float> talker_direct;  // their direct sound alone at the centre microphone, dead or not
    MicrophoneRows noise;              // sensor and diffuse noise
    MicrophoneRows echo;               // of the far end
    std::vector<float> far_end;        // what the loudspeaker plays

    MicrophoneRows mixture() const;
};

// The result depends on the options only, to the bit on one machine. A part does not change when another part's
// options do.
// fails: std::invalid_argument names the option and its range.
Scene makeScene(const SceneOptions& options);

// The talker that may speak at this time: 0 the first, 1 the second; and its azimuth, of the walking talker the
// present one.
int talkerAt(const SceneOptions& options, double seconds);
double talkerAzimuthAt(const SceneOptions& options, double seconds);

// Rounded to nearest and saturated.
std::vector<int16_t> toInt16(const std::vector<float>& row);

// Microphone rows and the far end as the device records them: interleaved int16 frames of kChannels.
// An empty far end leaves channel 0 silent.
std::vector<int16_t> interleave(const MicrophoneRows& rows, const std::vector<float>& far_end);

}  // namespace se_scene
