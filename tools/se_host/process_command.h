// `se_host process`: a recording through an engine.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addProcessCommand(CLI::App& app);

}  // namespace se_host
