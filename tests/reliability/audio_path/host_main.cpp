// audio_path_host: the same proof for libse_host. Its sound is processed, in calls of any length, on a thread that may make
// no system call, while other threads edit, read and look at the health without a pause.
// Exit code 0: no allocation and no lock; 1: some, or a system call; 77: the kernel has no seccomp.
#include <CLI/CLI.hpp>
#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "common/file.h"
#include "host/se_host.h"
#include "tests/reliability/audio_path/calls.h"
#include "tests/reliability/audio_path/in_child.h"
#include "tests/reliability/audio_path/seal.h"
#include "tests/reliability/support/sound.h"

namespace {

using reliability::Calls;
using reliability::Sound;

constexpr int kSome = 1;
constexpr int kNoSeccomp = 77;
constexpr uint32_t kChannels = 8;
constexpr size_t kBlocksOfRound = 8;
constexpr size_t kFramesOfRound = kBlocksOfRound * SE_HOST_BLOCK;

struct Options {
    std::string engine = "se_lib_beamv1.14";
    uint64_t blocks = 100'000;
};

struct Proof {
    Calls calls{};
    bool could_seal = false;
    std::atomic<bool> ended{false};
};

// Some blocks of sound in all forms, in calls of 1 to 300 frames.
class Rounds {
  public:
    explicit Rounds(se_host_t* host) : host_(host) {}

    void process(uint64_t round) {
        for (size_t block = 0; block < kBlocksOfRound; ++block) {
            sound_.next(kChannels, far_end_ + block * SE_HOST_BLOCK,
                        captured_ + block * SE_HOST_BLOCK * kChannels);
        }
        for (size_t i = 0; i < kFramesOfRound * kChannels; ++i)
            floats_[i] = static_cast<float>(captured_[i]) / 32768.0f;
        se_host_bypass(host_, round % 16 == 15);
        for (size_t done = 0; done < kFramesOfRound;) {
            const size_t count = std::min(kFramesOfRound - done, 1 + (round * 37 + done * 13) % 300);
            se_host_clock(host_, time_ += 1'000'000);
            if (round % 2 == 0) {
                se_host_process_i16(host_, captured_ + done * kChannels, kChannels, far_end_ + done, count,
                                    mono_);
            } else {
                se_host_process_f32(host_, floats_ + done * kChannels, kChannels, nullptr, count,
                                    mono_floats_);
            }
            done += count;
        }
    }

  private:
    se_host_t* host_;
    Sound sound_;
    uint64_t time_ = 0;
    int16_t captured_[kFramesOfRound * kChannels], far_end_[kFramesOfRound], mono_[kFramesOfRound];
    float floats_[kFramesOfRound * kChannels], mono_floats_[kFramesOfRound];
};

[[noreturn]] void runSealed(Rounds& rounds, uint64_t count, Proof& proof) {
    proof.could_seal = reliability::sealThisThread();
    if (proof.could_seal) {
        const Calls before = reliability::callsOfThisThread();
        for (uint64_t round = 0; round < count; ++round) rounds.process(round);
        const Calls after = reliability::callsOfThisThread();
        proof.calls = {after.allocations - before.allocations, after.releases - before.releases,
                       after.locks - before.locks};
    }
    proof.ended = true;
    reliability::endThisThread();
}

void editAll(se_host_t* host, const std::vector<std::string>& names, const Proof& proof) {
    for (uint64_t i = 0; !proof.ended; ++i) {
        const std::string& name = names[i % names.size()];
        se_host_set(host, name.c_str(), std::to_string(i / names.size() % 2).c_str(), nullptr, 0);
        char value[64];
        se_host_get(host, name.c_str(), value, sizeof(value), nullptr);
        std::this_thread::yield();
    }
}

void lookAtHealth(se_host_t* host, const Proof& proof) {
    while (!proof.ended) {
        se_host_health_t health{};
        health.size = sizeof(health);
        se_host_health(host, &health);
        std::this_thread::yield();
    }
}

std::vector<std::string> writableNames(const se_host_t* host) {
    std::vector<std::string> names;
    for (size_t place = 0; place < se_host_setting_count(host); ++place) {
        se_host_setting_t setting{};
        setting.size = sizeof(setting);
        se_host_setting(host, place, &setting);
        if (setting.writable != 0) names.emplace_back(setting.name);
    }
    return names;
}

int report(const Options& options, const Proof& proof, const se_host_health_t& health) {
    std::printf("%s: %" PRIu64 " blocks without a system call, %" PRIu64 " edits meanwhile\n  %" PRIu64
                " allocations, %" PRIu64 " releases, %" PRIu64 " locks\n",
                options.engine.c_str(), health.blocks + health.bypassed_blocks,
                health.edits_applied + health.edits_dropped, proof.calls.allocations, proof.calls.releases,
                proof.calls.locks);
    std::fflush(stdout);
    return proof.calls.allocations + proof.calls.releases + proof.calls.locks == 0 ? 0 : kSome;
}

int prove(const Options& options) {
    const std::string engine = quill::File::joinPath(quill::getExePath(), "selibs/" + options.engine);
    se_host_options_t wanted = SE_HOST_OPTIONS_INIT;
    wanted.engine = engine.c_str();
    wanted.log = [](void*, int, const char*, const char*) {};
    se_host_t* host = nullptr;
    char why[300];
    if (se_host_open(&wanted, &host, why, sizeof(why)) != SE_HOST_OK) {
        std::fprintf(stderr, "audio_path_host: %s\n", why);
        return kSome;
    }
    Proof proof;
    Rounds rounds(host);
    std::thread audio([&] { runSealed(rounds, options.blocks / kBlocksOfRound, proof); });
    std::thread edits([&] { editAll(host, writableNames(host), proof); });
    std::thread looks([&] { lookAtHealth(host, proof); });
    audio.join();
    edits.join();
    looks.join();
    if (!proof.could_seal) {
        std::puts("skipped: the kernel has no seccomp filter");
        return kNoSeccomp;
    }
    se_host_health_t health{};
    health.size = sizeof(health);
    se_host_health(host, &health);
    se_host_close(host);
    return report(options, proof, health);
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Processes sound with libse_host on a thread that may make no system call.");
    app.add_option("--engine", options.engine, "Build in the folder selibs beside the program")
        ->capture_default_str();
    app.add_option("--blocks", options.blocks, "160 frames each")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    return reliability::proveInChild(options.engine, [&] { return prove(options); });
}
