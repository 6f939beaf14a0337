// What a client may set, and what the engine reports. Diagnostics are names for these fields. Plain data.
// MMIfInit restores the defaults.
#pragma once

#include <cstdint>

#include "reference_engine/engine_interface.h"
#include "reference_engine/format.h"

namespace reference_engine {

enum LookMode : int32_t { kAllDirections, kForward, kNarrowForward, kOneDirection, kLookModes };
enum OutputSource : int32_t { kBeam, kCentreMicrophone, kOutputSources };

struct Settings {
    int16_t receive_gain_q10 = 1024;

    uint16_t bypass_location_search = 0;  // not 0: the forced location counts
    int16_t force_location_index = 0;
    int16_t force_location_confidence = 0;
    int32_t look_mode = kAllDirections;
    float rear_rejection_db = 0;          // of the output, while sound comes from outside the sector
    int32_t switch_hold_blocks = 0;       // for which another direction must be ahead
    uint64_t search_gate_energy = 16000;  // sum of squares over a block: -70 dBFS
    uint16_t restart_search = 0;          // not 0: restarts at the next block, which clears it

    int16_t most_sharpness_q10 = 1024;  // of the beams; 0: robust weights alone

    int32_t output_source = kBeam;
    int32_t output_gain_q10 = 1024;
    int64_t unmute_at_sample = 0;  // of the sample clock; the output is silent before

    uint32_t noise_test_blocks = 200;

    uint16_t aec_bypass = 0;
    uint16_t noise_reduction_bypass = 0;
    int16_t echo_safety_factor_q10 = 1024;
    int16_t nf_weight_factor_q10 = 1024;
    int16_t nf_fullband_weight_factor_q10 = 1024;
    int16_t comfort_noise_q10 = 0;  // 205: as much as the noise reduction leaves in a pause
};

struct Readings {
    uint64_t sample_clock = 0;  // samples since MMIfInit
    uint32_t blocks = 0;

    uint64_t far_end_energy = 0;

    float echo_enhancement_db = 0;
    uint16_t echo_tail_ms = 0;
    float echo_delay_ms = 0;
    float echo_drift_ppm = 0;
    float echo_path_energy[kPartitions] = {};

    // Of the device's channels 1 to 7.
    uint64_t microphone_energy[kMicrophones] = {};
    int16_t microphone_peak[kMicrophones] = {};
    uint16_t microphone_clipped[kMicrophones] = {};  // samples at the ends of the range, this block
    uint32_t microphone_clipped_total[kMicrophones] = {};
    float microphone_dbfs[kMicrophones] = {};
    uint16_t microphone_faulty[kMicrophones] = {};
    int64_t microphone_correlation[kMicrophones] = {};  // with the centre, sum of products

    int32_t array_source = 0;
    uint16_t location = 0;
    int16_t confidence = 0;
    int32_t look_azimuth_deg = 0;
    float response[kLocations] = {};
    uint16_t azimuth_deg[kLocations] = {};
    uint32_t blocks_at_location[kLocations] = {};
    int32_t steering_delay_ns[kMicrophones] =
        {};  // of the look direction, against the centre; channels 1 to 7
    float sharpness = 0;
    int32_t beam_peak[kLocations] = {};
    uint64_t beam_energy[kLocations] = {};
    int64_t beam_correlation[kLocations] = {};  // with the centre, sum of products

    int16_t output_block[kBlock] = {};
    float output_dbfs = 0;
    int64_t output_correlation = 0;  // with the beams' centre microphone

    int32_t noise_test_state = 0;
    NoiseTestRecord noise_test = {};  // the last finished test
};

// Constant-initialised, so that the catalogue may point into them at load time.
extern Settings g_settings;
extern Readings g_readings;

}  // namespace reference_engine
