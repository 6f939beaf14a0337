// audio_path: runs blocks on a thread that may make no system call, with edits from another thread in between, and
// counts its allocations and locks. Exit code 0: none; 1: some; 2: wrong usage; 77: the kernel has no seccomp.
#include <CLI/CLI.hpp>
#include <cinttypes>
#include <cstdio>
#include <map>
#include <string>
#include <thread>

#include "common/logging.h"
#include "tests/reliability/audio_path/audio_thread.h"
#include "tests/reliability/audio_path/in_child.h"
#include "tests/reliability/support/running_engine.h"

namespace {

using reliability::AudioThread;
using reliability::Violation;

constexpr int kSome = 1;
constexpr int kNoSeccomp = 77;

struct Options {
    std::string engine = "se_lib_beamv1.14";
    uint64_t blocks = 100'000;
    Violation violation = Violation::kNone;
    bool json = false;
};

int report(const Options& options, const AudioThread& audio, uint64_t rounds) {
    const reliability::Calls& calls = audio.calls();
    const char* const format =
        options.json ? "{\"engine\": \"%s\", \"blocks\": %" PRIu64 ", \"rounds_of_edits\": %" PRIu64
                       ", \"allocations\": %" PRIu64 ", \"releases\": %" PRIu64 ", \"locks\": %" PRIu64
                       ", \"checksum\": \"%016" PRIx64 "\"}\n"
                     : "%s: %" PRIu64 " blocks without a system call, %" PRIu64
                       " rounds of edits in between\n  %" PRIu64 " allocations, %" PRIu64
                       " releases, %" PRIu64 " locks\n  checksum %016" PRIx64 "\n";
    std::printf(format, options.engine.c_str(), options.blocks, rounds, calls.allocations, calls.releases,
                calls.locks, audio.checksum());
    std::fflush(stdout);
    return calls.allocations + calls.releases + calls.locks == 0 ? 0 : kSome;
}

int prove(const Options& options) {
    quill::setLogThreshold(2);
    reliability::RunningEngine engine(options.engine);
    AudioThread audio(options.blocks, options.violation);
    std::thread thread([&] { audio.run(); });
    uint64_t rounds = 0;
    for (; audio.waitForRound(rounds); ++rounds) {
        engine.edit(rounds);
        audio.letGoOn(rounds);
    }
    thread.join();
    if (!audio.couldSeal()) {
        std::puts("skipped: the kernel has no seccomp filter");
        return kNoSeccomp;
    }
    return report(options, audio, rounds);
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Runs blocks on a thread that may make no system call, and counts allocations and locks.");
    app.add_option("--engine", options.engine, "Build in the folder selibs beside the program")
        ->capture_default_str();
    app.add_option("--blocks", options.blocks, "160 frames each")->capture_default_str();
    app.add_option("--violate", options.violation, "Let the first block do what it must not")
        ->transform(CLI::CheckedTransformer(std::map<std::string, Violation>{
            {"allocation", Violation::kAllocation},
            {"lock", Violation::kLock},
            {"system-call", Violation::kSystemCall},
        }))
        ->option_text("allocation|lock|system-call");
    app.add_flag("--json", options.json, "The result as JSON");
    CLI11_PARSE(app, argc, argv);
    return reliability::proveInChild(options.engine, [&] { return prove(options); });
}
