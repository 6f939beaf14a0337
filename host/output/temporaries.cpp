#include "host/output/temporaries.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstring>

#include "host/output/errors.h"

namespace se_output {
namespace {

struct Entry {
    std::atomic<pid_t> owner;  // 0: free; kClaimed: `path` is being written
    char path[PATH_MAX];
};
static_assert(std::atomic<pid_t>::is_always_lock_free);

constexpr pid_t kClaimed = -1;
constexpr size_t kMostEntries = 16;  // more than any command writes at the same time
using Entries = std::array<Entry, kMostEntries>;

Entries& entries() {
    static Entries* const shared = [] {
        static Entries alone;  // without memory to share, each process cleans up after itself
        void* const memory =
            ::mmap(nullptr, sizeof(Entries), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        return memory == MAP_FAILED ? &alone : static_cast<Entries*>(memory);
    }();
    return *shared;
}

[[noreturn]] void cannotKeep(const std::string& path, const std::string& why) {
    throw Failure("cannot make the temporary file '" + path + "': " + why);
}

size_t claim(const std::string& path) {
    for (size_t place = 0; place < kMostEntries; ++place) {
        pid_t free = 0;
        if (entries()[place].owner.compare_exchange_strong(free, kClaimed)) return place;
    }
    cannotKeep(path, "too many are in use; write fewer outputs at once");
}

extern "C" void onSignal(int number) {
    removeTemporaryFiles();
    ::signal(number, SIG_DFL);
    ::raise(number);
}

}  // namespace

void removeTemporaryFilesOf(pid_t process) {
    for (Entry& entry : entries()) {
        if (entry.owner.load() != process) continue;
        ::unlink(entry.path);
        entry.owner.store(0);
    }
}

void removeTemporaryFiles() {
    removeTemporaryFilesOf(::getpid());
}

void removeTemporaryFilesOnSignals() {
    entries();
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU, SIGALRM}) {
        struct sigaction old {};
        ::sigaction(number, nullptr, &old);
        if (old.sa_handler != SIG_IGN) ::signal(number, onSignal);
    }
    for (const int number : {SIGPIPE, SIGXFSZ}) ::signal(number, SIG_IGN);
}

TemporaryName::TemporaryName(const std::string& path) {
    if (path.size() >= PATH_MAX) cannotKeep(path, "its path is too long; give a shorter output path");
    place_ = claim(path);
    std::memcpy(entries()[place_].path, path.c_str(), path.size() + 1);
    entries()[place_].owner.store(::getpid());
}

TemporaryName::~TemporaryName() {
    entries()[place_].owner.store(0);
}

SignalsBlocked::SignalsBlocked() {
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, &before_);
}

SignalsBlocked::~SignalsBlocked() {
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace se_output
