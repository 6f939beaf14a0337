#include "reference_engine/control/catalogue.h"

#include <cstring>
#include <iterator>

#include "reference_engine/audio/noise_test.h"
#include "reference_engine/build.h"
#include "reference_engine/control/array_file.h"
#include "reference_engine/settings.h"

namespace reference_engine {
namespace {

enum Level : int32_t { kBasic, kIntermediate, kAdvanced, kDebug };

struct Range {
    double lowest = 0;
    double highest = 0;
};

constexpr Range kSwitch = {0, 1};
constexpr Range kQ10 = {0, 32767};
constexpr Range kAny40 = {-549755813888.0, 549755813887.0};

constexpr const char* kLookModeLabels[kLookModes] = {"All directions", "Forward", "Narrow forward",
                                                     "One direction"};
constexpr const char* kOutputSourceLabels[kOutputSources] = {"Beam", "Centre microphone"};
constexpr const char* kArrayLabels[kArraySources] = {"Built in", "File", "File refused"};
constexpr const char* kNoiseTestLabels[NoiseTest::kStates] = {"Idle", "Running", "Done"};

// The type of a diagnostic is the type of the field that it names.
constexpr SEDiagType_t typeOf(const int16_t*) {
    return kSEDiagInt16;
}
constexpr SEDiagType_t typeOf(const uint16_t*) {
    return kSEDiagUInt16;
}
constexpr SEDiagType_t typeOf(const int32_t*) {
    return kSEDiagInt32;
}
constexpr SEDiagType_t typeOf(const uint32_t*) {
    return kSEDiagUInt32;
}
constexpr SEDiagType_t typeOf(const int64_t*) {
    return kSEDiagInt40;
}
constexpr SEDiagType_t typeOf(const uint64_t*) {
    return kSEDiagUInt40;
}
constexpr SEDiagType_t typeOf(const float*) {
    return kSEDiagFloat32;
}

SEDiag_t row(const char* name, Level level, SEDiagType_t type, SEDiagRW_t rw, void* value, int32_t len,
             const char* help) {
    SEDiag_t diag = {};
    std::strncpy(diag.name, name, sizeof diag.name - 1);
    diag.value = value;
    diag.type = type;
    diag.len = len;
    diag.level = level;
    diag.rw = rw;
    diag.help = help;
    return diag;
}

template <class T>
SEDiag_t setting(const char* name, Level level, T& field, Range range, const char* help,
                 SEDiagRW_t rw = kSEDiagReadWrite) {
    SEDiag_t diag = row(name, level, typeOf(&field), rw, &field, 1, help);
    diag.lowest = range.lowest;
    diag.highest = range.highest;
    return diag;
}

template <class T>
SEDiag_t reading(const char* name, Level level, T& field, const char* help) {
    return row(name, level, typeOf(&field), kSEDiagRead, &field, 1, help);
}

template <class T, size_t N>
SEDiag_t readings(const char* name, Level level, T (&field)[N], const char* help) {
    return row(name, level, typeOf(field), kSEDiagRead, field, static_cast<int32_t>(N), help);
}

template <size_t N>
SEDiag_t choice(const char* name, Level level, SEDiagRW_t rw, int32_t& field, const char* const (&labels)[N],
                const char* help) {
    SEDiag_t diag = row(name, level, kSEDiagEnum, rw, &field, 1, help);
    diag.labels = labels;
    diag.label_count = static_cast<int32_t>(N);
    diag.highest = static_cast<double>(N - 1);
    return diag;
}

Settings& set = g_settings;
Readings& get = g_readings;

SEDiag_t g_rows[] = {
    // Receive path.
    setting(kReceiveGainName, kBasic, set.receive_gain_q10, kQ10,
            "Gain of the far end towards the loudspeaker, 1024 = 1"),
    reading("sercv_far_end_energy", kAdvanced, get.far_end_energy,
            "Sum of squares of the last block that the loudspeaker played"),

    // Look direction.
    choice("mmfx_look_mode", kBasic, kSEDiagReadWrite, set.look_mode, kLookModeLabels,
           "Sector in which the location search looks for the talker"),
    setting("mmfx_rear_rejection_db", kIntermediate, set.rear_rejection_db, {0, 40},
            "Decibels by which the output is lowered while sound comes from outside the sector"),
    setting("mmfx_bypass_location_search", kIntermediate, set.bypass_location_search, kSwitch,
            "1: look where mmfx_force_location_index says instead of searching"),
    setting("mmfx_force_location_index", kIntermediate, set.force_location_index, {0, kLocations - 1},
            "Location to look at while the search is bypassed; azimuth in steps of 30 degrees"),
    setting("mmfx_force_location_confidence", kIntermediate, set.force_location_confidence, {0, 32767},
            "Confidence to report while the search is bypassed"),
    setting("mmfx_switch_hold_blocks", kAdvanced, set.switch_hold_blocks, {0, 1000},
            "Blocks of sound for which another direction must be ahead before the beam turns to it"),
    setting("mmfx_search_gate_energy", kAdvanced, set.search_gate_energy, {0, 171798691840.0},
            "Sum of squares over a block, mean of the microphones, below which the search ignores it"),
    setting("mmfx_restart_search", kAdvanced, set.restart_search, kSwitch,
            "1: restart the search; done at the next block", kSEDiagWrite),
    setting(
        "mmfx_most_sharpness_q10", kIntermediate, set.most_sharpness_q10, {0, 1024},
        "Largest share of the sharp weights in a beam, 1024 = 1; 0: as robust against the microphones' own "
        "noise, wind and tolerances as can be"),
    reading("mmfx_location", kBasic, get.location, "Location that the beam looks at"),
    reading("mmfx_look_azimuth_deg", kBasic, get.look_azimuth_deg,
            "The same in degrees; 0 is where microphone 3 stands"),
    reading("mmfx_location_confidence", kBasic, get.confidence,
            "Contrast of that direction with all others, 0 to 32767"),
    choice(
        "mmfx_array", kIntermediate, kSEDiagRead, get.array_source, kArrayLabels,
        "Where the places of the microphones come from: the environment variable SE_ARRAY_FILE names a file"),
    readings("mmfx_azimuth_deg", kDebug, get.azimuth_deg, "Azimuth of each location in degrees"),
    readings("mmfx_response", kAdvanced, get.response,
             "Power that the search finds at each location; 1: all sound comes from there"),
    readings("mmfx_blocks_at_location", kDebug, get.blocks_at_location,
             "Blocks for which the beam has looked at each location"),
    readings("mmfx_steering_delay_ns", kDebug, get.steering_delay_ns,
             "Nanoseconds by which the beam delays the microphones 1 to 7 against the centre, which is 1"),
    reading("mmfx_sharpness", kIntermediate, get.sharpness,
            "Share of the sharp weights in the beam, 0 to 1: that with which the output has the least power"),
    readings("mmfx_beam_peak", kDebug, get.beam_peak,
             "Largest magnitude of each beam in its last block: that of the look direction in each block, "
             "the others in turn"),
    readings("mmfx_beam_energy", kDebug, get.beam_energy, "Sum of squares of each beam in its last block"),
    readings("mmfx_beam_correlation", kDebug, get.beam_correlation,
             "Sum of products of each beam with the centre microphone in its last block"),

    // Echo canceller.
    reading("seaec_enhancement_db", kBasic, get.echo_enhancement_db,
            "Echo attenuation at the microphones in decibels, over a second of active far end"),
    reading("seaec_tail_ms", kAdvanced, get.echo_tail_ms, "Longest echo that is cancelled, milliseconds"),
    reading("seaec_delay_ms", kIntermediate, get.echo_delay_ms,
            "Delay of the far end at which the echo canceller starts, milliseconds"),
    reading("seaec_drift_ppm", kIntermediate, get.echo_drift_ppm,
            "Clock of the microphones against that of the loudspeaker, parts per million"),
    readings("seaec_path_energy", kDebug, get.echo_path_energy,
             "Energy of each 20 ms of the echo path from that delay on, mean of the microphones"),

    // Microphones.
    readings("semic_level_dbfs", kBasic, get.microphone_dbfs,
             "Level of the microphones 1 to 7 in the last block; microphone N is in the device's channel N"),
    readings("semic_energy", kAdvanced, get.microphone_energy,
             "Sum of squares of the last block of the microphones 1 to 7"),
    readings("semic_peak", kIntermediate, get.microphone_peak,
             "Largest magnitude in the last block of the microphones 1 to 7"),
    readings("semic_clipped", kAdvanced, get.microphone_clipped,
             "Samples of the last block at the ends of the range, of the microphones 1 to 7"),
    readings("semic_clipped_total", kIntermediate, get.microphone_clipped_total,
             "The same since the engine was initialised"),
    readings("semic_faulty", kBasic, get.microphone_faulty,
             "1: that of the microphones 1 to 7 is dead or far too quiet or loud, and the others replace it"),
    readings("semic_correlation", kDebug, get.microphone_correlation,
             "Sum of products of the last block of the microphones 1 to 7 with the centre one, which is 1"),

    // Output.
    choice("seout_source", kBasic, kSEDiagReadWrite, set.output_source, kOutputSourceLabels,
           "Signal that goes to the output"),
    setting("seout_gain_q10", kBasic, set.output_gain_q10, {0, 32767}, "Gain of the output, 1024 = 1"),
    setting("seout_unmute_at_sample", kAdvanced, set.unmute_at_sample, kAny40,
            "Count of sesys_sample_clock before which the output is silent"),
    reading("seout_level_dbfs", kBasic, get.output_dbfs, "Level of the last output block"),
    reading("seout_correlation", kDebug, get.output_correlation,
            "Sum of products of the last output block with the centre microphone"),
    readings("seout_block", kDebug, get.output_block, "The last output block"),

    // Noise reduction and echo control.
    setting("senr_echo_safety_factor_q10", kIntermediate, set.echo_safety_factor_q10, kQ10,
            "Weight of the expected residual echo in the noise reduction, 1024 = 1"),
    setting("senr_nf_weight_factor_q10", kAdvanced, set.nf_weight_factor_q10, kQ10,
            "Weight of noise and reverberation in each band, 1024 = 1"),
    setting("senr_nf_fullband_weight_factor_q10", kAdvanced, set.nf_fullband_weight_factor_q10, kQ10,
            "Weight of the noise floor of the whole band, 1024 = 1"),
    setting("senr_comfort_noise_q10", kIntermediate, set.comfort_noise_q10, {0, 1024},
            "Share of the background to which comfort noise fills pauses and suppressed echo, 1024 = 1"),

    // Noise test and clocks.
    setting("sent_blocks", kIntermediate, set.noise_test_blocks, {1, 60000},
            "Blocks of 10 ms over which the noise test measures"),
    choice("sent_state", kIntermediate, kSEDiagRead, get.noise_test_state, kNoiseTestLabels,
           "Whether a noise test is running"),
    row("sent_levels_dbfs", kAdvanced, kSEDiagFloat32, kSEDiagRead, &get.noise_test, 180,
        "The last noise test: 30 rows of 250 Hz with the levels of the microphones 3, 2, 5, 6, 7, 4"),
    reading("sesys_sample_clock", kDebug, get.sample_clock, "Samples since the engine was initialised"),
    reading("sesys_blocks", kBasic, get.blocks, "Blocks since the engine was initialised"),
};

}  // namespace

int32_t catalogueSize() {
    return static_cast<int32_t>(std::size(g_rows));
}

SEDiag_t* catalogueRow(int32_t index) {
    return index >= 0 && index < catalogueSize() ? &g_rows[index] : nullptr;
}

}  // namespace reference_engine
