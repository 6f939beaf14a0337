#include "tools/se_host/commands/second_run.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <utility>

#include "host/engine/engine.h"
#include "host/engine/engine_stage.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "tools/se_host/engine/exit_status.h"

namespace se_host {
namespace {

constexpr const char* kRun = "the second run, with the engine's own routines, ";
constexpr const char* kAdvice = "; leave out --compare-routines";

// false: the peer closed the connection.
bool send(int socket, const void* data, size_t size) {
    const char* from = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t sent = ::send(socket, from, size, MSG_NOSIGNAL);
        if (sent <= 0) return false;
        from += sent;
        size -= static_cast<size_t>(sent);
    }
    return true;
}

bool receive(int socket, void* data, size_t size) {
    return ::recv(socket, data, size, MSG_WAITALL) == static_cast<ssize_t>(size);
}

// The work of the child. Its exit does not affect the parent's open files.
[[noreturn]] void work(int socket, EngineOptions engine, const RecordingOptions& options, bool bypass,
                       bool split_cycles) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    char go = 0;
    if (!receive(socket, &go, 1)) ::_exit(kDone);
    try {
        engine.routines = Routines::kEngine;
        engine.gain.reset();
        engine.echo_safety_factor.reset();
        startEngine(engine);
        const Processed processed = process(readRecording(options), {bypass, {}, split_cycles});
        const CycleShares cycles = processed.cycles.value_or(CycleShares{});
        const bool sent = send(socket, &processed.processing_seconds, sizeof(double)) &&
                          send(socket, &cycles, sizeof(cycles)) &&
                          send(socket, processed.output.data(), processed.output.size() * sizeof(int16_t));
        ::_exit(sent ? kDone : kFailure);
    } catch (const std::exception& error) {
        std::cerr << "se_host: " << se_output::oneLine(error.what()) << std::endl;
        ::_exit(kFailure);
    }
}

[[noreturn]] void cannotStart() {
    throw se_output::Failure(kRun + std::string("cannot be started") + kAdvice);
}

}  // namespace

SecondRun::SecondRun(const EngineOptions& engine, const RecordingOptions& recording, bool bypass,
                     bool split_cycles)
    : split_cycles_(split_cycles) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) cannotStart();
    socket_ = ends[0];
    child_ = ::fork();
    if (child_ == 0) {
        ::close(ends[0]);
        work(ends[1], engine, recording, bypass, split_cycles);
    }
    ::close(ends[1]);
    if (child_ > 0) return;
    ::close(socket_);
    cannotStart();
}

SecondRun::~SecondRun() {
    ::close(socket_);  // ends a child that still waits
    if (child_ > 0) ::waitpid(child_, nullptr, 0);
}

// A run that ends with kFailure has said why.
void SecondRun::failed() {
    int status = 0;
    ::waitpid(std::exchange(child_, 0), &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kFailure) {
        throw se_output::Failure(kRun + std::string("failed") + kAdvice);
    }
    throw EngineFailure(kRun + std::string("was ended by the engine ") + stageText() + kAdvice);
}

Processed SecondRun::finish(size_t frames) {
    Processed processed;
    processed.output.resize(frames);
    CycleShares cycles{};
    const char go = 1;
    if (!send(socket_, &go, 1) || !receive(socket_, &processed.processing_seconds, sizeof(double)) ||
        !receive(socket_, &cycles, sizeof(cycles)) ||
        !receive(socket_, processed.output.data(), frames * sizeof(int16_t))) {
        failed();
    }
    if (split_cycles_) processed.cycles = cycles;
    return processed;
}

}  // namespace se_host
