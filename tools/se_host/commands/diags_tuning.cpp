// `se_host diags dump`, `restore` and `diff`: whole tunings.
#include <iostream>
#include <memory>
#include <optional>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/output_paths.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/tuned_engine.h"

namespace se_host {
namespace {

struct DumpOptions : DiagsOptions {
    std::string output;
};

void dump(const DumpOptions& options) {
    superviseEngine(options.engine.supervision);
    refuseClashes({options.recording.input, options.recording.far_end_file}, {options.output});
    std::optional<se_output::OutputFile> file;
    if (!options.output.empty()) file.emplace(options.output);
    const auto tuned = startTuned(options);
    processWith(options, *tuned);
    const Tuning tuning = tuningOf(tuned->engine, tuned->tree);
    if (!file) {
        printJson(toJson(tuning));
        return;
    }
    writeTuning(*file, tuning);
    file->commit();
    textStream(file->isStandardOutput()) << "wrote " << options.output << ": " << tuning.diagnostics.size()
                                         << " diagnostics of " << tuning.version << '\n';
}

struct RestoreOptions {
    EngineChoice engine;
    OnDifference on_difference = OnDifference::kStatus;
    std::string path;
};

void restore(const RestoreOptions& options) {
    superviseEngine(options.engine.supervision);
    const Tuning tuning = readTuning(options.path);
    const Engine engine = startEngine(options.engine);
    DiagTree tree;
    const Applied applied = applyTuning(tuning, engine, tree);
    for (const std::string& line : applied.changed) std::cout << line << '\n';
    std::cout << quill::stringPrintf("%zu changed, %zu kept for the record, %zu unknown, %zu refused\n",
                                     applied.changed.size(), applied.kept, applied.unknown.size(),
                                     applied.refused.size());
    std::cout.flush();
    printWarnings(warnings(options.path, tuning, engine, applied));
    if (!applied.asAsked()) settingsDiffer(options.on_difference);
}

struct DiffOptions {
    std::string a, b;
};

void diff(const DiffOptions& options) {
    const auto lines = differences(options.a, readTuning(options.a), options.b, readTuning(options.b));
    for (const std::string& line : lines) std::cout << line << '\n';
    if (lines.empty()) std::cout << "no difference\n";
}

}  // namespace

void addDiagsDump(CLI::App& diags) {
    CLI::App* const command = diags.add_subcommand("dump", "Write the values of all diagnostics: a tuning");
    const auto options = std::make_shared<DumpOptions>();
    command->add_option("OUT.json", options->output, "The tuning (default: standard output)")->type_name("");
    addRecording(*command, *options);
    addEngineAndTuning(*command, *options);
    command->callback([options] { dump(*options); });
}

void addDiagsRestore(CLI::App& diags) {
    CLI::App* const command =
        diags.add_subcommand("restore", "Try a tuning on an engine, and show what it changes");
    const auto options = std::make_shared<RestoreOptions>();
    command->add_option("FILE.json", options->path, "A tuning that 'se_host diags dump' wrote")
        ->required()
        ->type_name("");
    addOnDifference(*command, options->on_difference);
    addEngineChoice(*command, options->engine);
    command->footer(
        "Read-only diagnostics and arrays are kept in a tuning for the record; they are not applied.\n");
    command->callback([options] { restore(*options); });
}

void addDiagsDiff(CLI::App& diags) {
    CLI::App* const command = diags.add_subcommand("diff", "Show the differences between two tunings");
    const auto options = std::make_shared<DiffOptions>();
    command->add_option("A.json", options->a, "A tuning")->required()->type_name("");
    command->add_option("B.json", options->b, "Another one")->required()->type_name("");
    command->callback([options] { diff(*options); });
}

}  // namespace se_host
