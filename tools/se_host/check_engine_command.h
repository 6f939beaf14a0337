// `se_host check-engine`: whether an engine build is one that the wrapper can use.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addCheckEngineCommand(CLI::App& app);

}  // namespace se_host
