// The engine of this process: the build that was loaded, and the property tree that it was loaded with.
// Threads: one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/property_node.h"
#include "host/output/errors.h"

namespace se_host {

// The routines in the engine's hooks. With any of the engine's own, nothing is tuned: the engine is only
// initialised.
enum class Routines {
    kOurs,
    kEngine,     // all of the engine's own
    kEngineDft,  // ours except the Fourier transform: they are exact and must not change a bit
};

struct EngineOptions {
    std::string build;          // file in the folder; empty: chosen by device model
    std::string folder;         // of the engine builds; empty: defaultEngineFolder()
    std::string file;           // path of a build, instead of the two
    bool device_model = false;  // the device that has a build of its own
    std::string array;          // file with the places of the microphones; empty: the build's own array
    Routines routines = Routines::kOurs;
    std::optional<int16_t> gain;                // receive gain, in the engine's units
    std::optional<int16_t> echo_safety_factor;  // in the engine's units
    std::vector<std::string> settings;          // PATH=VALUE, in the order given
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

// The process has an engine, and it is another one.
struct EngineInUse : se_output::Failure {
    using Failure::Failure;
};

// The same for a process that has to outlive a build that cannot be used: no record is fatal. Can be called again, with the
// same build. The array is the caller's to give. fails: EngineInUse, UsageError or Failure, also for a build that the
// wrapper refuses.
Engine startCheckedEngine(const EngineOptions& options);

}  // namespace se_host
