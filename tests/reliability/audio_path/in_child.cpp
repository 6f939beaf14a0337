#include "tests/reliability/audio_path/in_child.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

int reliability::proveInChild(const std::string& engine, const std::function<int()>& prove) {
    const pid_t child = ::fork();
    if (child == 0) std::_Exit(prove());
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status)) return WEXITSTATUS(status);
    std::printf("%s: ended by signal %d (%s)\n", engine.c_str(), WTERMSIG(status),
                WTERMSIG(status) == SIGSYS ? "a block made a system call" : "a block failed");
    return 1;
}
