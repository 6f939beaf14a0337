// The commands of se_host. Each function but the first registers one and is in the file with the command's name.
#pragma once

#include <CLI/CLI.hpp>

namespace se_host {

// All of them; one has to be given.
void addCommands(CLI::App& app);

void addProcess(CLI::App& app);
void addScene(CLI::App& app);
void addNoiseTest(CLI::App& app);
void addSpectrum(CLI::App& app);
void addHighpass(CLI::App& app);
void addIntelligibility(CLI::App& app);
void addInfo(CLI::App& app);
void addDiags(CLI::App& app);
void addCheckEngine(CLI::App& app);
void addDoctor(CLI::App& app);
void addSweep(CLI::App& app);

// Those of `se_host diags`.
void addDiagsList(CLI::App& diags);
void addDiagsGet(CLI::App& diags);
void addDiagsSet(CLI::App& diags);
void addDiagsDump(CLI::App& diags);
void addDiagsRestore(CLI::App& diags);
void addDiagsDiff(CLI::App& diags);
void addDiagsWatch(CLI::App& diags);

// Those of `se_host sweep`.
void addSweepManifest(CLI::App& sweep);
void addSweepPlan(CLI::App& sweep);
void addSweepRun(CLI::App& sweep);
void addSweepMerge(CLI::App& sweep);
void addSweepReport(CLI::App& sweep);
void addSweepTask(CLI::App& sweep);  // for `sweep run`

}  // namespace se_host
