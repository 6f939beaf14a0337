// `se_host diags set`: edits that are applied together and can be saved in a tuning.
#include <memory>
#include <optional>
#include <utility>

#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/tuned_engine.h"

namespace se_host {
namespace {

using Json = nlohmann::ordered_json;

struct SetOptions : DiagsOptions {
    std::vector<std::string> assignments;
    std::string save;
};

struct Edit {
    std::string name;
    std::string text;
    Json before;
};

bool isKnown(const std::string& name, const DiagTree& tree) {
    return isBypassSwitch(name) || tree.find(name) != nullptr;
}

Edit editOf(const std::string& assignment, const DiagTree& tree) {
    const size_t equals = assignment.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw se_output::UsageError("'" + assignment + "' is not an assignment; write NAME=VALUE");
    }
    const std::string name = assignment.substr(0, equals);
    return {name, assignment.substr(equals + 1), isKnown(name, tree) ? tree.valueOf(name) : nullptr};
}

// All of them or none reach the engine; with --lenient those that it can take.
std::vector<Edit> editTree(const SetOptions& options, DiagTree& tree) {
    std::vector<Edit> edits;
    for (const std::string& assignment : options.assignments) {
        Edit edit = editOf(assignment, tree);
        const auto objection = tree.edit(edit.name, edit.text);
        if (!objection) {
            edits.push_back(std::move(edit));
        } else if (options.on_difference == OnDifference::kAccept) {
            printWarnings({*objection});
        } else {
            throw SettingsDiffer(*objection + "; 'se_host diags list' shows what can be set");
        }
    }
    return edits;
}

void run(const SetOptions& options) {
    superviseEngine(options.engine.supervision);
    std::optional<se_output::OutputFile> file;
    if (!options.save.empty()) file.emplace(options.save);
    const auto tuned = startTuned(options);
    const std::vector<Edit> edits = editTree(options, tuned->tree);
    const std::vector<std::string> differences = tuned->tree.apply();
    printWarnings(differences);
    if (!differences.empty()) settingsDiffer(options.on_difference);
    if (file) {
        writeTuning(*file, tuningOf(tuned->engine, tuned->tree));
        file->commit();
    }
    std::ostream& out = textStream(file && file->isStandardOutput());
    for (const Edit& edit : edits) {
        out << se_output::oneLine(edit.name + ": " + toText(edit.before) + " -> " +
                                  toText(tuned->tree.valueOf(edit.name)))
            << '\n';
    }
}

}  // namespace

void addDiagsSet(CLI::App& diags) {
    CLI::App* const command =
        diags.add_subcommand("set", "Set diagnostics, all of them or none, and show the resulting values");
    const auto options = std::make_shared<SetOptions>();
    command->add_option("NAME=VALUE", options->assignments, "An Enum takes its number; a switch 0 or 1")
        ->required()
        ->type_name("");
    command->add_option("--save", options->save, "Write the tuning that results")->type_name("OUT.json");
    addEngineAndTuning(*command, *options);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
