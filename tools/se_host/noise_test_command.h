// `se_host noise-test`: the engine's microphone noise test on a recording or on a simulated array.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addNoiseTestCommand(CLI::App& app);

}  // namespace se_host
