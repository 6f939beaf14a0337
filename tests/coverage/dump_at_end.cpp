// Preloaded by `run`: writes the coverage counters also when a process ends by abort() or _exit(), as death tests and
// forked children do. Compiled with --coverage, so that it shares the counters' list with the libraries.
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>

extern "C" void __gcov_dump();

namespace {

void dumpAndAbort(int) {
    __gcov_dump();
    std::signal(SIGABRT, SIG_DFL);
    std::raise(SIGABRT);
}

__attribute__((constructor)) void catchAbort() {
    std::signal(SIGABRT, dumpAndAbort);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void _exit(int status) {
    __gcov_dump();
    syscall(SYS_exit_group, status);
    __builtin_unreachable();
}
