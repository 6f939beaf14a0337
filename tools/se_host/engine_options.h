// Which engine a command wants: the options that `process` and `info` share.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace se_host {

struct EngineOptions {
    std::string engine;                         // build file in selibs/; empty: chosen by device model
    bool device_model = false;                  // the device that has a build of its own
    bool engine_routines = false;               // leave the engine's own routines in its hooks
    std::optional<int16_t> gain;                // receive gain, in the engine's units
    std::optional<int16_t> echo_safety_factor;  // in the engine's units
    std::vector<std::string> settings;          // PATH=VALUE, in the order given
};

// --engine and --device-model.
void addEngineChoice(CLI::App& command, EngineOptions& options);

// --engine-routines, --gain, --echo-safety-factor and --set.
void addEngineSettings(CLI::App& command, EngineOptions& options);

}  // namespace se_host
