#include "tools/se_host/sweep/backend.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "common/file.h"
#include "host/output/errors.h"

namespace se_host::sweep {
namespace {

namespace fs = std::filesystem;

// From the folder of the program, in the build tree and in an installation.
constexpr const char* kScripts = "../share/libse_wrapper/sweep";

std::string names() {
    std::vector<std::string> found;
    std::error_code error;
    for (const fs::directory_entry& file :
         fs::directory_iterator(fs::path(quill::getExePath()) / kScripts, error)) {
        found.push_back(file.path().stem().string());
    }
    std::sort(found.begin(), found.end());
    std::string all;
    for (const std::string& name : found) all += (all.empty() ? "" : ", ") + name;
    return all;
}

}  // namespace

std::string backendScript(const std::string& name) {
    const bool is_path = name.find('/') != std::string::npos;
    const fs::path path =
        is_path ? fs::path(name) : fs::path(quill::getExePath()) / kScripts / (name + ".sh");
    if (fs::is_regular_file(path)) return fs::absolute(path).lexically_normal().string();
    throw se_output::UsageError("there is no backend '" + name + "'; choose one of: " + names() +
                                ", or give the path of a script");
}

bool runBackend(const std::string& script, const Folder& folder, size_t shards) {
    const std::string program = fs::read_symlink("/proc/self/exe").string();
    const std::string count = std::to_string(shards);
    const pid_t child = ::fork();
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        ::setenv("SE_HOST", program.c_str(), 1);
        ::execl(script.c_str(), script.c_str(), fs::absolute(folder.path()).c_str(), count.c_str(), nullptr);
        ::_exit(127);
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child ||
        (WIFEXITED(status) && WEXITSTATUS(status) == 127)) {
        throw se_output::Failure("cannot start '" + script + "'; is it executable?");
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace se_host::sweep
