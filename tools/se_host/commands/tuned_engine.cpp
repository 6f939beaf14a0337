#include "tools/se_host/commands/tuned_engine.h"

#include "tools/se_host/commands/recording_options.h"
#include "tools/se_host/engine/processing.h"

namespace se_host {

void addEngineAndTuning(CLI::App& command, DiagsOptions& options) {
    command
        .add_option("--tuning", options.tuning, "Apply this tuning first; 'se_host diags dump' writes one")
        ->type_name("FILE.json");
    addOnDifference(command, options.on_difference);
    addEngineChoice(command, options.engine);
    addArray(command, options.engine.array);
}

void addRecording(CLI::App& command, DiagsOptions& options) {
    auto* const recording = command.add_option("--recording", options.recording.input,
                                               "Process this WAV or FLAC of 8 or more channels first");
    recording->type_name("IN");
    addFarEnd(command, options.recording);
    for (const char* const option : {"--far-end", "--far-end-channel", "--channel-map"}) {
        command.get_option(option)->needs(recording);
    }
}

std::unique_ptr<TunedEngine> startTuned(const DiagsOptions& options) {
    auto tuned = std::make_unique<TunedEngine>(TunedEngine{startEngine(options.engine), DiagTree()});
    if (!options.tuning.empty()) {
        tuneFromFile(options.tuning, tuned->engine, tuned->tree, options.on_difference);
    }
    return tuned;
}

void processWith(const DiagsOptions& options, TunedEngine& tuned,
                 const std::function<void(size_t block)>& after_block) {
    if (options.recording.input.empty()) return;
    process(readRecording(options.recording), {false, after_block, false});
    tuned.tree.publish();
}

void tuneFromFile(const std::string& path, const Engine& engine, DiagTree& tree, OnDifference on_difference) {
    const Tuning tuning = readTuning(path);
    const Applied applied = applyTuning(tuning, engine, tree);
    printWarnings(warnings(path, tuning, engine, applied));
    if (!applied.asAsked()) settingsDiffer(on_difference);
}

}  // namespace se_host
