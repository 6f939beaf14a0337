// The summary of a run of `se_host process`.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/engine/engine.h"
#include "tools/se_host/commands/call_report.h"
#include "tools/se_host/engine/processing.h"
#include "tools/se_host/engine/talker.h"
#include "tools/se_host/sound/levels.h"
#include "tools/se_host/sound/recording.h"
#include "tools/se_host/sound/scene_parts.h"

namespace se_host {

// A run with the engine's own routines, compared with the one with ours.
struct Comparison {
    double processing_seconds;
    int largest_difference;  // between the outputs, in steps of 16 bits
    double difference_db;    // power of the difference over that of the output; minus infinity: none
    std::optional<CycleShares> cycles;
};

// Of two outputs of one length; `processing_seconds` and `cycles` are left to the caller.
Comparison compare(const std::vector<int16_t>& output, const std::vector<int16_t>& other);

struct Summary {
    std::string input;
    std::string output;
    std::string far_end;  // its source; empty: none
    bool bypass = false;

    std::string build;
    std::string version;
    bool has_beam_forming = false;
    bool has_noise_tests = false;

    size_t blocks = 0;
    double seconds = 0;
    int channels = 0;
    int file_sample_rate = 0;
    double processing_seconds = 0;
    BlockTimes block_times;

    std::vector<Level> input_levels;  // one a channel
    Level output_level{};
    std::vector<Direction> directions;
    std::optional<Talker> talker;
    CallReport call;
    std::optional<Effect> effect;  // when the recording's parts are known
    std::optional<CycleShares> cycles;
    std::optional<Comparison> engine_routines;

    // Processing time over the length of the sound: below 1 is faster than real time.
    double realTimeFactor(double processing) const { return processing / seconds; }
};

// A few lines, the last one ended.
std::string toText(const Summary& summary);

// A level of silence is null, as is what a run does not have.
nlohmann::ordered_json toJson(const Summary& summary);

}  // namespace se_host
