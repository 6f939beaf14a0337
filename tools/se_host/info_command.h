// `se_host info`: which engine there is, what it can do and what runs it.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addInfoCommand(CLI::App& app);

}  // namespace se_host
