// `se_host sweep manifest`: the recordings of a sweep, from a folder or a list.
#include <memory>

#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/sweep_steps.h"

namespace se_host {
namespace {

constexpr const char* kManifestExplanation =
    "A line for each recording: {\"id\": \"room1/call\", \"recording\": \"/data/room1/call.wav\", "
    "\"far_end\": 0}.\n"
    "'far_end' is a file or a channel, 'parts' the prefix of the recording's parts; every other field\n"
    "is a label, by which the results can be grouped.\n"
    "Examples:\n"
    "  se_host sweep manifest recordings/ --out recordings.jsonl\n"
    "  se_host sweep manifest --wav-scp data/wav.scp --far-end-scp data/far.scp > recordings.jsonl\n";

struct ManifestOptions {
    std::string folder;
    std::string wav_scp;
    std::string far_end_scp;
    std::string out = "-";
    sweep::FarEndChoice far_end;
};

void run(const ManifestOptions& options) {
    if (options.folder.empty() == options.wav_scp.empty()) {
        throw se_output::UsageError("give either a folder of recordings or --wav-scp");
    }
    se_output::OutputFile file(options.out);
    sweep::writeManifest(
        file, options.wav_scp.empty()
                  ? sweep::recordingsBelow(options.folder, options.far_end)
                  : sweep::recordingsOfList(options.wav_scp, options.far_end_scp, options.far_end));
    file.commit();
}

}  // namespace

void addFarEndChoice(CLI::App& command, sweep::FarEndChoice& far_end) {
    CLI::Option* const channel =
        command.add_option("--far-end-channel", far_end.channel,
                           "The far end of every recording of a folder: a channel, from 0");
    channel->type_name("N")->check(CLI::NonNegativeNumber.description(""));
    command
        .add_option("--far-end-suffix", far_end.suffix,
                    "The far end of NAME.wav is the file NAME, this text and .wav (default: -far)")
        ->type_name("TEXT")
        ->excludes(channel);
}

void addSweepManifest(CLI::App& sweep) {
    CLI::App* const command =
        sweep.add_subcommand("manifest", "List the recordings of a folder or of a wav.scp");
    const auto options = std::make_shared<ManifestOptions>();
    command->add_option("FOLDER", options->folder, "WAV and FLAC files in it and below it")->type_name("");
    CLI::Option* const list =
        command->add_option("--wav-scp", options->wav_scp,
                            "A list instead, a line for each recording: an id, a blank and a path");
    list->type_name("FILE");
    command->add_option("--far-end-scp", options->far_end_scp, "The far ends, a list with the same ids")
        ->type_name("FILE")
        ->needs(list);
    addFarEndChoice(*command, options->far_end);
    command->add_option("--out", options->out, "The manifest (default: standard output)")
        ->type_name("MANIFEST");
    command->footer(kManifestExplanation);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
