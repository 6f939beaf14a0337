// Which engine a command wants, and with which routines: the options that `process` and `info` share.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace se_host {

// Whose routines stand in the engine's hooks. With any of the engine's own, nothing is tuned: the engine is
// initialised and that is all.
enum class Routines {
    kOurs,
    kEngine,     // all of the engine's own
    kEngineDft,  // ours, but for the Fourier transform: the exact ones, which must not change a bit
};

struct EngineOptions {
    std::string engine;         // build file in selibs/; empty: chosen by device model
    bool device_model = false;  // the device that has a build of its own
    Routines routines = Routines::kOurs;
    std::optional<int16_t> gain;                // receive gain, in the engine's units
    std::optional<int16_t> echo_safety_factor;  // in the engine's units
    std::vector<std::string> settings;          // PATH=VALUE, in the order given
};

// --engine and --device-model.
void addEngineChoice(CLI::App& command, EngineOptions& options);

// --engine-routines, --engine-dft, --gain, --echo-safety-factor and --set.
void addEngineSettings(CLI::App& command, EngineOptions& options);

}  // namespace se_host
