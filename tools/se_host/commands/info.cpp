// `se_host info`: the engine, its capabilities, and the kernels that run it.
#include <memory>

#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/engine/engine_info.h"

namespace se_host {
namespace {

struct InfoOptions {
    EngineChoice engine;
    bool json = false;
};

void run(const InfoOptions& options) {
    superviseEngine(options.engine.supervision);
    print(gatherInfo(loadEngine(options.engine)), options.json);
}

}  // namespace

void addInfo(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "info", "Show the engine, its capabilities, the processor, the kernels and the properties");
    const auto options = std::make_shared<InfoOptions>();
    addEngineChoice(*command, options->engine);
    command->add_flag("--json", options->json, "The answer as JSON");
    command->footer("Example:\n  se_host info --engine se_lib_harborv006\n");
    command->callback([options] { run(*options); });
}

}  // namespace se_host
