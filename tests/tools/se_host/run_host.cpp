#include "tests/tools/se_host/run_host.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

extern char** environ;

namespace se_host_test {
namespace {

std::string takeText(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    std::remove(path.c_str());
    return text.str();
}

pid_t spawnHost(std::vector<std::string> words, const std::string& out, const std::string& err) {
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&files, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t child = 0;
    const int error = posix_spawn(&child, argv[0], &files, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    if (error != 0) throw std::runtime_error("cannot start " + words[0]);
    return child;
}

// Waits for the end of the host. Reading its standard error is left to the caller.
HostRun finish(pid_t child, const std::string& out) {
    int status = 0;
    waitpid(child, &status, 0);
    HostRun run;
    if (WIFEXITED(status)) run.exit_code = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) run.signal = WTERMSIG(status);
    run.out = takeText(out);
    return run;
}

std::vector<std::string> commandLine(const std::string& program, const std::vector<std::string>& arguments) {
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

}  // namespace

size_t HostRun::errorLines() const {
    return static_cast<size_t>(std::count(err.begin(), err.end(), '\n'));
}

HostRun runHost(const std::string& folder, const std::vector<std::string>& arguments,
                const std::string& program) {
    const std::string out = folder + "/.standard-output";
    const std::string err = folder + "/.standard-error";
    HostRun run = finish(spawnHost(commandLine(program, arguments), out, err), out);
    run.err = takeText(err);
    return run;
}

HostRun runHostOnTerminal(const std::string& folder, const std::vector<std::string>& arguments) {
    const std::string out = folder + "/.standard-output";
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
        throw std::runtime_error("cannot make a terminal");
    }
    // Kept open, so that the host's output can still be read after its end.
    const std::string name = ptsname(terminal);
    const int keeper = open(name.c_str(), O_RDWR | O_NOCTTY);
    HostRun run = finish(spawnHost(commandLine(SE_HOST_PATH, arguments), out, name), out);

    // The kernel delivers it in pieces, the last ones possibly after the host's end.
    constexpr int kNothingMoreMs = 500;
    pollfd readable{terminal, POLLIN, 0};
    char text[4096];
    while (poll(&readable, 1, kNothingMoreMs) > 0) {
        const ssize_t length = read(terminal, text, sizeof(text));
        if (length <= 0) break;
        run.err.append(text, static_cast<size_t>(length));
    }
    close(keeper);
    close(terminal);
    return run;
}

}  // namespace se_host_test
