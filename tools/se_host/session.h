// A running engine: the property tree, the engine build loaded into the process and started.
// Threads: one. An engine stays loaded for the life of the process, so there is one session a process.
#pragma once

#include <string>

#include "common/property_node.h"
#include "tools/se_host/engine_options.h"

namespace se_host {

struct Session {
    quill::PropertyNodePtr root;
    std::string build;    // file name of the engine build
    std::string version;  // the engine's own text
};

// Sets the properties and loads the engine that they choose. fails: UsageError or Failure; an engine that
// the wrapper refuses ends the process through the record sink.
Session loadSession(const EngineOptions& options);

// The same, and starts the engine: ready for blocks.
Session startSession(const EngineOptions& options);

}  // namespace se_host
