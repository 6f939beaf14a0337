// What `se_host process` tells about a run, for people and for machines.
// Threads: any.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "tools/se_host/levels.h"
#include "tools/se_host/processing.h"
#include "tools/se_host/recording.h"
#include "tools/se_host/session.h"
#include "tools/se_host/talker.h"

namespace se_host {

struct Summary {
    std::string input;
    std::string output;
    std::string far_end;  // where it came from; empty: none
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

    std::vector<Level> input_levels;  // one a channel
    Level output_level{};
    std::vector<Direction> directions;
    std::optional<Talker> talker;

    // Processing time over the time that the sound lasts: below 1 is faster than it is spoken.
    double realTimeFactor() const { return processing_seconds / seconds; }
};

// A few lines, the last one ended.
std::string toText(const Summary& summary);

// A level of silence is null, as is what a run does not have.
nlohmann::ordered_json toJson(const Summary& summary);

}  // namespace se_host
