#include "tools/se_host/diags_session.h"

#include <iostream>

#include "tools/se_host/one_line.h"
#include "tools/se_host/processing.h"
#include "tools/se_host/recording_options.h"

namespace se_host {

void addEngineAndTuning(CLI::App& command, DiagsOptions& options) {
    command.add_option("--tuning", options.tuning, "Apply a tuning that 'se_host diags dump' wrote first")
        ->type_name("FILE.json");
    addEngineChoice(command, options.engine);
}

void addRecording(CLI::App& command, DiagsOptions& options) {
    auto* const recording = command.add_option("--recording", options.recording.input,
                                               "Process this first, WAV or FLAC, 8 or more channels");
    recording->type_name("IN");
    addFarEnd(command, options.recording);
    command.get_option("--far-end")->needs(recording);
    command.get_option("--far-end-channel")->needs(recording);
}

std::unique_ptr<DiagsSession> openDiags(const DiagsOptions& options) {
    auto diags = std::make_unique<DiagsSession>(DiagsSession{startSession(options.engine), DiagTree()});
    if (!options.tuning.empty()) tuneFromFile(options.tuning, diags->session, diags->tree);
    return diags;
}

void processWith(const DiagsOptions& options, DiagsSession& diags,
                 const std::function<void(size_t block)>& after_block) {
    if (options.recording.input.empty()) return;
    process(readRecording(options.recording), {false, false, after_block});
    diags.tree.publish();
}

void tellWarnings(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) std::cerr << "se_host: " << oneLine(line) << std::endl;
}

void tuneFromFile(const std::string& path, const Session& session, DiagTree& tree) {
    const Tuning tuning = readTuning(path);
    const Applied applied = applyTuning(tuning, session, tree);
    tellWarnings(warnings(path, tuning, session, applied));
}

}  // namespace se_host
