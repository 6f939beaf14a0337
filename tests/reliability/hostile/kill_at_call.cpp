// Runs a program and kills it when its process number PLACE (0: the first, 1: its first child, ...) is about to make
// its system call number CALL. WHOM says what is killed then: that process alone ("one"), or all ("all").
// Prints the exit status of the first process (128 and the signal, when one ended it) and the number of system calls
// of process PLACE.
//
//     kill_at_call PLACE CALL one|all PROGRAM ARGUMENTS...
#include <signal.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

class Tracer {
  public:
    Tracer(size_t place, long call, bool all) : place_(place), call_(call), all_(all) {}

    // The exit status of `first`, after the ends of all processes.
    int run(pid_t first);
    long calls() const { return calls_; }

  private:
    size_t placeOf(pid_t process);
    void onCall(pid_t process);
    void go(pid_t process, int number) const { ::ptrace(PTRACE_SYSCALL, process, nullptr, number); }

    size_t place_;
    long call_;
    bool all_;
    std::vector<pid_t> processes_;  // in the order in which they appeared
    std::vector<bool> in_call_;
    long calls_ = 0;
};

size_t Tracer::placeOf(pid_t process) {
    const auto found = std::find(processes_.begin(), processes_.end(), process);
    if (found != processes_.end()) return static_cast<size_t>(found - processes_.begin());
    processes_.push_back(process);
    in_call_.push_back(false);
    return processes_.size() - 1;
}

void Tracer::onCall(pid_t process) {
    const size_t place = placeOf(process);
    in_call_[place] = !in_call_[place];
    if (!in_call_[place] || place != place_ || ++calls_ != call_) return;
    for (const pid_t one : processes_) {
        if (all_ || one == process) ::kill(one, SIGKILL);
    }
}

int Tracer::run(pid_t first) {
    placeOf(first);
    ::waitpid(first, nullptr, 0);
    ::ptrace(PTRACE_SETOPTIONS, first, nullptr,
             PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACEFORK | PTRACE_O_TRACEVFORK | PTRACE_O_TRACECLONE |
                 PTRACE_O_EXITKILL);
    go(first, 0);
    int result = 0;
    int status = 0;
    for (pid_t process; (process = ::waitpid(-1, &status, __WALL)) > 0;) {
        if (!WIFSTOPPED(status)) {
            if (process == first) result = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
            continue;
        }
        const bool is_new = std::find(processes_.begin(), processes_.end(), process) == processes_.end();
        const int number = WSTOPSIG(status);
        if (number == (SIGTRAP | 0x80)) onCall(process);
        placeOf(process);
        const bool is_event = number == (SIGTRAP | 0x80) || status >> 16 != 0 || number == SIGTRAP ||
                              (is_new && number == SIGSTOP);
        go(process, is_event ? 0 : number);
    }
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 5) {
        std::fprintf(stderr, "usage: kill_at_call PLACE CALL one|all PROGRAM ARGUMENTS...\n");
        return 2;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        ::execv(argv[4], argv + 4);
        ::_exit(127);
    }
    Tracer tracer(std::strtoul(argv[1], nullptr, 10), std::strtol(argv[2], nullptr, 10),
                  std::strcmp(argv[3], "all") == 0);
    const int status = tracer.run(child);
    std::printf("%d %ld\n", status, tracer.calls());
}
