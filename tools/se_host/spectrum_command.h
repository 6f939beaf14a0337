// `se_host spectrum`: what a sound is made of.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addSpectrumCommand(CLI::App& app);

}  // namespace se_host
