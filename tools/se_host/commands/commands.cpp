#include "tools/se_host/commands/commands.h"

namespace se_host {

void addCommands(CLI::App& app) {
    app.require_subcommand(1);
    addProcess(app);
    addScene(app);
    addNoiseTest(app);
    addSpectrum(app);
    addHighpass(app);
    addIntelligibility(app);
    addInfo(app);
    addDiags(app);
    addCheckEngine(app);
    addDoctor(app);
    addSweep(app);
}

}  // namespace se_host
