// The subcommands of `se_host diags`, a file each.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

void addDiagsList(CLI::App& diags);
void addDiagsGet(CLI::App& diags);
void addDiagsSet(CLI::App& diags);
void addDiagsDump(CLI::App& diags);
void addDiagsRestore(CLI::App& diags);
void addDiagsDiff(CLI::App& diags);
void addDiagsWatch(CLI::App& diags);

}  // namespace se_host
