#include "tools/se_host/engine/supervisor.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>

#include "common/string_printf.h"
#include "host/engine/engine_stage.h"
#include "host/output/errors.h"
#include "host/output/temporaries.h"
#include "tools/se_host/engine/exit_status.h"
#include "tools/se_host/engine/watchdog.h"

namespace se_host {
namespace {

// Requests to end, which the parent forwards.
constexpr int kRequests[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};
// Seconds that the child has to end after a request.
constexpr int kPatience = 3;

// A process that is ended by another signal ends its parent by that signal, too.
constexpr int kCrashes[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGTRAP, SIGSYS, SIGKILL};

class Supervisor {
  public:
    Supervisor(pid_t child, const sigset_t& signals, const Supervision& supervision)
        : child_(child), signals_(signals), supervision_(supervision), watchdog_(supervision.timeout) {}

    [[noreturn]] void run();

  private:
    void onTick();
    void onRequest(int number);
    void endChild();
    [[noreturn]] void finish(int wait_status);
    std::string reason(int wait_status) const;
    [[noreturn]] static void endBy(int number);

    pid_t child_;
    sigset_t signals_;
    const Supervision& supervision_;
    Watchdog watchdog_;
    int request_ = 0;   // the signal; 0: none came
    int patience_ = 0;  // seconds left after it
    bool timed_out_ = false;
};

void say(const std::string& text) {
    std::cerr << "se_host: " << text << std::endl;
}

template <size_t kCount>
bool isIn(const int (&signals)[kCount], int number) {
    return std::find(std::begin(signals), std::end(signals), number) != std::end(signals);
}

std::string howItEnded(int wait_status) {
    if (WIFEXITED(wait_status)) return quill::stringPrintf("exit status %d", WEXITSTATUS(wait_status));
    const char* const text = ::sigdescr_np(WTERMSIG(wait_status));
    return text != nullptr ? text : quill::stringPrintf("signal %d", WTERMSIG(wait_status));
}

const char* advice() {
    switch (engineStage()) {
        case EngineStage::kNone:
            return "; please report this";
        case EngineStage::kEnding:
            return "; the outputs are complete";
        default:
            return "; choose another engine build";
    }
}

void Supervisor::run() {
    for (int status = 0;;) {
        if (::waitpid(child_, &status, WNOHANG) == child_) finish(status);
        const timespec second{1, 0};
        const int number = ::sigtimedwait(&signals_, nullptr, &second);
        if (number < 0) onTick();
        if (isIn(kRequests, number)) onRequest(number);
    }
}

void Supervisor::onTick() {
    if (request_ != 0 && --patience_ <= 0) endChild();
    switch (watchdog_.tick()) {
        case Watchdog::Verdict::kGoesOn:
            return;
        case Watchdog::Verdict::kWarn:
            say(quill::stringPrintf("no answer from the engine for %d s ", watchdog_.seconds()) +
                stageText() + "; waiting, --engine-timeout would end it");
            return;
        case Watchdog::Verdict::kEnd:
            timed_out_ = true;
            endChild();
    }
}

void Supervisor::onRequest(int number) {
    if (request_ == 0) patience_ = kPatience;
    request_ = number;
    ::kill(child_, number);
}

void Supervisor::endChild() {
    ::kill(child_, SIGKILL);
}

void Supervisor::finish(int wait_status) {
    se_output::removeTemporaryFilesOf(child_);
    const int noted = notedEnd();
    if (noted > kDone || (WIFEXITED(wait_status) && WEXITSTATUS(wait_status) == noted)) std::exit(noted);
    if (request_ != 0) endBy(request_);
    say(reason(wait_status) + advice());
    if (WIFSIGNALED(wait_status) && !isIn(kCrashes, WTERMSIG(wait_status))) endBy(WTERMSIG(wait_status));
    if (engineStage() == EngineStage::kNone) std::exit(kFailure);
    if (noted == -1 && supervision_.on_engine_end) supervision_.on_engine_end(reason(wait_status));
    std::exit(kEngineEnded);
}

std::string Supervisor::reason(int wait_status) const {
    if (timed_out_) {
        return quill::stringPrintf("no answer from the engine for %d s, it was ended ", watchdog_.seconds()) +
               stageText();
    }
    const char* const who = engineStage() == EngineStage::kNone ? "se_host" : "the engine";
    return std::string(who) + " ended the process (" + howItEnded(wait_status) + ") " + stageText();
}

void Supervisor::endBy(int number) {
    ::signal(number, SIG_DFL);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, number);
    ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
    ::raise(number);
    std::exit(kFailure);
}

// SIGCHLD, and the requests that this process does not ignore.
sigset_t signalsToWaitFor() {
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGCHLD);
    for (const int number : kRequests) {
        struct sigaction action {};
        ::sigaction(number, nullptr, &action);
        if (action.sa_handler != SIG_IGN) ::sigaddset(&signals, number);
    }
    return signals;
}

// Without a supervisor; _exit and crashes go unnoticed here.
void reportExit() {
    if (notedEnd() != -1) return;
    se_output::removeTemporaryFiles();
    say("the engine ended the process " + stageText() + advice());
    ::_exit(kEngineEnded);
}

// The child ends with its parent, whatever ends that, and removes its temporaries.
void endWithParent(pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::raise(SIGTERM);
}

}  // namespace

void superviseEngine(const Supervision& supervision) {
    shareStage();
    if (supervision.in_process) {
        std::atexit(reportExit);
        return;
    }
    ::signal(SIGCHLD, SIG_DFL);
    const sigset_t signals = signalsToWaitFor();
    sigset_t before;
    ::sigprocmask(SIG_BLOCK, &signals, &before);
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child > 0) Supervisor(child, signals, supervision).run();
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    if (child < 0) throw se_output::Failure(std::string("cannot start a process: ") + std::strerror(errno));
    std::set_terminate(std::abort);  // the parent says what happened
    endWithParent(parent);
}

}  // namespace se_host
