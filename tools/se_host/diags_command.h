// `se_host diags`: looks at and tunes what an engine offers to look at and tune.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addDiagsCommand(CLI::App& app);

}  // namespace se_host
