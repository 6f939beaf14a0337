// `se_host scene`: a simulated recording, for trying the engine without a microphone array.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addSceneCommand(CLI::App& app);

}  // namespace se_host
