#include "tools/se_host/info_command.h"

#include <iostream>
#include <memory>

#include "tools/se_host/engine_info.h"
#include "tools/se_host/engine_options.h"
#include "tools/se_host/print_json.h"

namespace se_host {
namespace {

struct InfoOptions {
    EngineOptions engine;
    bool json = false;
};

void run(const InfoOptions& options) {
    const EngineInfo info = gatherInfo(loadSession(options.engine));
    if (options.json) {
        printJson(toJson(info));
    } else {
        std::cout << toText(info);
    }
}

}  // namespace

void addInfoCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand(
        "info", "Show the engine, what it offers, the processor, the kernels and the properties");
    const auto options = std::make_shared<InfoOptions>();
    addEngineChoice(*command, options->engine);
    command->add_flag("--json", options->json, "The answer as JSON");
    command->footer("Example:\n  se_host info --engine se_lib_harborv006\n");
    command->callback([options] { run(*options); });
}

}  // namespace se_host
