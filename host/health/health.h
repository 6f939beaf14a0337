// What can be told of running sound.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/audio/wiring.h"

namespace se_host {

struct Health {
    struct Clock {
        uint64_t missing_frames;
        uint64_t late_calls;
    };
    struct Microphone {
        double dbfs;
        bool dead;
    };
    struct Levels {
        double far_end_dbfs;
        std::array<Microphone, kMicrophones> microphones;
    };
    struct EchoDelay {
        double ms;
        double confidence;  // 0 to 1
    };
    // In microseconds.
    struct Times {
        double mean;
        double p999;
        double worst;
    };

    uint64_t frames = 0;
    uint64_t blocks = 0;
    uint64_t bypassed_blocks = 0;
    uint64_t failed_blocks = 0;
    uint64_t edits_applied = 0;
    uint64_t edits_dropped = 0;
    double far_end_silent_seconds = 0;
    std::array<uint64_t, kMicrophones> clipped{};
    std::array<bool, kMicrophones> wired{};

    // Nothing: not known, or not known yet.
    std::optional<Clock> clock;
    std::optional<Levels> levels;
    std::optional<EchoDelay> echo_delay;
    std::optional<Times> times;
};

// What is wrong and what to do, a sentence each.
std::vector<std::string> adviceOn(const Health& health);

}  // namespace se_host
