// The engine of this process: the build that was loaded, and the property tree that it was loaded with.
// Threads: one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/property_node.h"
#include "tools/se_host/engine/supervisor.h"

namespace se_host {

// The routines in the engine's hooks. With any of the engine's own, nothing is tuned: the engine is only
// initialised.
enum class Routines {
    kOurs,
    kEngine,     // all of the engine's own
    kEngineDft,  // ours except the Fourier transform: they are exact and must not change a bit
};

struct EngineOptions {
    std::string build;          // file in selibs/; empty: chosen by device model
    bool device_model = false;  // the device that has a build of its own
    std::string array;          // file with the places of the microphones; empty: the build's own array
    Routines routines = Routines::kOurs;
    std::optional<int16_t> gain;                // receive gain, in the engine's units
    std::optional<int16_t> echo_safety_factor;  // in the engine's units
    std::vector<std::string> settings;          // PATH=VALUE, in the order given
    Supervision supervision;                    // the caller passes it to superviseEngine first
};

struct Engine {
    quill::PropertyNodePtr root;
    std::string build;    // file name of the engine build
    std::string version;  // the engine's own text
};

// Sets the properties and loads the engine that they select. It stays loaded until the process ends, so call this
// once. fails: UsageError or Failure; an engine that the wrapper refuses is a fatal record.
Engine loadEngine(const EngineOptions& options);

// The same, and starts the engine: ready for blocks.
Engine startEngine(const EngineOptions& options);

}  // namespace se_host
