#include "tools/output/temporary_file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "tools/output/errors.h"

namespace se_output {
namespace {

namespace fs = std::filesystem;

// Names for the signal handler; more than any command writes at the same time.
std::array<std::atomic<const char*>, 16> g_names{};

void replaceName(const char* from, const char* to) {
    for (auto& slot : g_names) {
        const char* expected = from;
        if (slot.compare_exchange_strong(expected, to)) return;
    }
}

[[noreturn]] void cannotWrite(const std::string& path, const std::string& why) {
    throw Failure("cannot write '" + path + "': " + why + "; give an output path that you may write");
}

// Also when the target of the last link does not exist yet.
std::string followLinks(const std::string& path) {
    constexpr int kMostLinks = 40;  // as many as the system follows
    std::error_code error;
    fs::path target = path;
    for (int i = 0; i < kMostLinks && fs::is_symlink(target, error); ++i) {
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    return target.string();
}

// The permissions of an ordinary new file; mkstemp gives access to the owner only.
void givePermissions(int descriptor) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(descriptor, 0666 & ~mask);
}

extern "C" void onSignal(int number) {
    removeTemporaryFiles();
    ::signal(number, SIG_DFL);
    ::raise(number);
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& path)
    : path_(path), target_(followLinks(path)), name_(target_ + ".XXXXXX") {
    std::error_code error;
    const fs::file_status status = fs::status(target_, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) cannotWrite(path_, "not a regular file");
    if (fs::exists(status) && ::access(target_.c_str(), W_OK) != 0) cannotWrite(path_, std::strerror(errno));

    const int descriptor = ::mkstemp(name_.data());
    if (descriptor < 0) cannotWrite(path_, std::strerror(errno));
    givePermissions(descriptor);
    ::close(descriptor);
    replaceName(nullptr, name_.c_str());
}

TemporaryFile::~TemporaryFile() {
    if (name_.empty()) return;
    replaceName(name_.c_str(), nullptr);
    ::unlink(name_.c_str());
}

void TemporaryFile::commit() {
    if (std::rename(name_.c_str(), target_.c_str()) != 0) cannotWrite(path_, std::strerror(errno));
    replaceName(name_.c_str(), nullptr);
    name_.clear();
}

void removeTemporaryFiles() {
    for (auto& slot : g_names) {
        if (const char* name = slot.exchange(nullptr)) ::unlink(name);
    }
}

void removeTemporaryFilesOnSignals() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction old {};
        ::sigaction(number, nullptr, &old);
        if (old.sa_handler != SIG_IGN) ::signal(number, onSignal);
    }
}

}  // namespace se_output
