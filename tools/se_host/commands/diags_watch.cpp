// `se_host diags watch`: the changes while a recording is processed.
#include <iostream>
#include <memory>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/recording_options.h"
#include "tools/se_host/commands/tuned_engine.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

using Json = nlohmann::ordered_json;
using quill::media::se_wrapper::BLOCK_SIZE;

struct WatchOptions : DiagsOptions {
    std::string pattern = "*";
};

struct Watched {
    DiagInfo diag;
    Json value;
};

std::vector<Watched> chosen(const DiagTree& tree, const std::string& pattern) {
    std::vector<Watched> watched;
    for (const DiagInfo& diag : tree.matching(pattern)) watched.push_back({diag, tree.value(diag)});
    return watched;
}

void printChanges(size_t block, const DiagTree& tree, std::vector<Watched>& watched) {
    const double seconds = static_cast<double>((block + 1) * BLOCK_SIZE) / kEngineSampleRate;
    for (Watched& one : watched) {
        Json value = tree.value(one.diag);
        if (value == one.value) continue;
        std::cout << quill::stringPrintf("%8.2f s  ", seconds)
                  << se_output::oneLine(one.diag.name + ": " + toText(one.value) + " -> " + toText(value))
                  << '\n';
        one.value = std::move(value);
    }
}

void run(const WatchOptions& options) {
    superviseEngine(options.engine.supervision);
    const auto tuned = startTuned(options);
    std::vector<Watched> watched = chosen(tuned->tree, options.pattern);
    processWith(options, *tuned, [&](size_t block) {
        tuned->tree.publish();
        printChanges(block, tuned->tree, watched);
        if (!std::cout) throw se_output::Failure("cannot write to standard output: it is full or closed");
    });
}

}  // namespace

void addDiagsWatch(CLI::App& diags) {
    CLI::App* const command =
        diags.add_subcommand("watch", "Print each change while a recording is processed, a line each");
    const auto options = std::make_shared<WatchOptions>();
    command->add_option("IN", options->recording.input, "Recording, WAV or FLAC, 8 or more channels")
        ->required()
        ->type_name("");
    command->add_option("PATTERN", options->pattern, "Names or paths, with * and ? (default: all)")
        ->type_name("");
    addFarEnd(*command, options->recording);
    addEngineAndTuning(*command, *options);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
