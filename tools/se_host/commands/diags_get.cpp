// `se_host diags get`: the values of some diagnostics.
#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>

#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/tuned_engine.h"

namespace se_host {
namespace {

using Json = nlohmann::ordered_json;

struct GetOptions : DiagsOptions {
    std::vector<std::string> names;
    bool json = false;
};

Json valuesOf(const std::vector<std::string>& names, const DiagTree& tree) {
    Json values = Json::object();
    for (const std::string& name : names) values[name] = tree.valueOf(name);
    return values;
}

void run(const GetOptions& options) {
    superviseEngine(options.engine.supervision);
    const auto tuned = startTuned(options);
    Json values = valuesOf(options.names, tuned->tree);  // fails soon when one is unknown
    processWith(options, *tuned);
    values = valuesOf(options.names, tuned->tree);
    if (options.json) {
        printJson(values);
        return;
    }
    for (const auto& [name, value] : values.items()) {
        std::cout << se_output::oneLine(name + ": " + toText(value)) << '\n';
    }
}

}  // namespace

void addDiagsGet(CLI::App& diags) {
    CLI::App* const command = diags.add_subcommand("get", "Show the values of some diagnostics");
    const auto options = std::make_shared<GetOptions>();
    command->add_option("NAME", options->names, "Names or paths; aec_bypass and noise_reduction_bypass too")
        ->required()
        ->type_name("");
    addRecording(*command, *options);
    addEngineAndTuning(*command, *options);
    command->add_flag("--json", options->json, "The values as JSON");
    command->callback([options] { run(*options); });
}

}  // namespace se_host
