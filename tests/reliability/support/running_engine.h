// An engine behind the wrapper as a host runs it: a property tree, both passes over the diagnostics, and edits.
// Threads: [setup] and [control].
#pragma once

#include <cstdint>
#include <string>

#include "common/property_node.h"

namespace reliability {

class RunningEngine {
  public:
    // Loads and starts the build of this name in the folder "selibs" beside the program.
    explicit RunningEngine(const std::string& build);

    // Edits of a user, applied and published. Which ones, and their values, depends on `round` alone.
    void edit(uint64_t round);

  private:
    void set(const std::string& path, int value);

    quill::PropertyNodePtr root_;
};

}  // namespace reliability
