// `se_host highpass`: a sound through the wrapper's 600 Hz high-pass.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addHighpassCommand(CLI::App& app);

}  // namespace se_host
