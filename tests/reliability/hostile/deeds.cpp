#include "tests/reliability/hostile/deeds.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include <cfenv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace hostile {
namespace {

// Also while the library is unloaded, after the static objects.
const std::string& request() {
    static const std::string* const text = [] {
        const char* const value = std::getenv("SE_HOSTILE");
        return new std::string(value == nullptr ? "" : value);
    }();
    return *text;
}

void log(const std::string& line) {
    const char* const path = std::getenv("SE_HOSTILE_LOG");
    if (path == nullptr) return;
    const int file = ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (::write(file, (line + "\n").c_str(), line.size() + 1) < 0) std::abort();
    ::close(file);
}

// The request that only logs each stage.
constexpr const char* kShow = "show stages";

void show(const std::string& stage) {
    static std::set<std::string>* const shown = new std::set<std::string>;
    if (shown->insert(stage).second) log("at " + stage);
}

volatile int g_zero = 0;
volatile char* volatile g_null = nullptr;

int useStack(int depth) {
    volatile char frame[4096];
    frame[0] = static_cast<char>(depth);
    if (depth < g_zero) return 0;
    return useStack(depth + 1) + frame[0];
}

void hang() {
    for (;;) ::pause();
}

void inThread(void (*deed)()) {
    std::thread(deed).join();
}

void hangMasked() {
    sigset_t all;
    ::sigfillset(&all);
    ::sigprocmask(SIG_BLOCK, &all, nullptr);
    hang();
}

template <int signal>
void endParent() {
    ::kill(::getppid(), signal);
}

// The child goes on when the engine has ended.
void leaveChild() {
    const pid_t child = ::fork();
    if (child == 0) hang();
    log("child " + std::to_string(child));
}

void leaveFolder() {
    const std::string log = std::getenv("SE_HOSTILE_LOG");
    if (::chdir(log.substr(0, log.rfind('/')).c_str()) != 0) std::abort();
}

void closeItself() {
    Dl_info self;
    ::dladdr(reinterpret_cast<void*>(&closeItself), &self);
    void* const handle = ::dlopen(self.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    for (int i = 0; i < 2; ++i) ::dlclose(handle);
}

struct Deed {
    const char* name;
    void (*act)();
};

const Deed kDeeds[] = {
    {"exit", [] { std::exit(0); }},
    {"exit-3", [] { std::exit(3); }},
    {"_exit", [] { ::_exit(0); }},
    {"quick_exit", [] { std::quick_exit(0); }},
    {"abort", [] { std::abort(); }},
    {"segv", [] { *g_null = 1; }},
    {"null-call", [] { reinterpret_cast<void (*)()>(const_cast<char*>(g_null))(); }},
    {"ill", [] { __builtin_trap(); }},
    {"fpe", [] { g_zero = 7 % g_zero; }},
    {"stack", [] { g_zero = useStack(0); }},
    {"throw", [] { throw std::runtime_error("engine\ntext"); }},
    {"throw-int", [] { throw 7; }},
    {"terminate", [] { std::terminate(); }},
    {"kill", [] { ::raise(SIGKILL); }},
    {"term", [] { ::raise(SIGTERM); }},
    {"alarm", [] { ::raise(SIGALRM); }},
    {"double-free",
     [] {
         void* volatile p = std::malloc(9);
         std::free(p);
         std::free(p);
     }},
    {"end-thread", [] { ::pthread_exit(nullptr); }},
    {"thread-exit", [] { inThread([] { std::exit(0); }); }},
    {"thread-_exit", [] { inThread([] { ::_exit(0); }); }},
    {"thread-segv", [] { inThread([] { *g_null = 1; }); }},
    {"thread-stack", [] { inThread([] { g_zero = useStack(0); }); }},
    {"thread-throw", [] { inThread([] { throw std::runtime_error("thread"); }); }},
    {"hang", hang},
    {"spin",
     [] {
         for (;;) g_zero = 0;
     }},
    {"hang-masked", hangMasked},
    {"stop", [] { ::raise(SIGSTOP); }},
    {"hang-thread", [] { inThread(hang); }},
    // As a user who interrupts the run, while the engine hangs.
    {"interrupt", [] { endParent<SIGINT>(), hang(); }},
    {"interrupt-masked", [] { endParent<SIGTERM>(), hangMasked(); }},
    // These let the run go on.
    {"close-itself", closeItself},
    {"close-files", [] { ::close_range(3, ~0U, 0); }},
    {"close-output", [] { ::close_range(1, 2, 0); }},
    {"change-folder", leaveFolder},
    {"round-up", [] { std::fesetround(FE_UPWARD); }},
    {"forget-signals",
     [] {
         for (int i = 1; i < 32; ++i) ::signal(i, SIG_DFL);
     }},
    {"ignore-signals",
     [] {
         for (int i = 1; i < 32; ++i) ::signal(i, SIG_IGN);
     }},
    {"leave-thread", [] { std::thread(hang).detach(); }},
    {"leave-child", leaveChild},
    {"noise", [] { std::fputs("the engine says something\n", stderr); }},
};

bool isSystemLibrary(const char* path) {
    for (const char* const name :
         {"/libc.so", "/libstdc++.so", "/libgcc_s.so", "/ld-linux", "/libm.so", "linux-vdso"}) {
        if (std::strstr(path, name) != nullptr) return true;
    }
    return false;
}

std::string fileOfTopFrame() {
    void* frames[64];
    const int count = ::backtrace(frames, static_cast<int>(std::size(frames)));
    for (int i = 2; i < count; ++i) {  // after this function and the handler
        Dl_info found;
        if (::dladdr(frames[i], &found) == 0 || isSystemLibrary(found.dli_fname)) continue;
        const char* const slash = std::strrchr(found.dli_fname, '/');
        return slash == nullptr ? found.dli_fname : slash + 1;
    }
    return "none";
}

extern "C" void onCrash(int number) {
    log("crash " + std::to_string(number) + " " + fileOfTopFrame());
    ::signal(number, SIG_DFL);
    ::raise(number);
}

}  // namespace

void noteCrashes() {
    static char stack[1 << 16];
    const stack_t other{stack, 0, sizeof stack};
    ::sigaltstack(&other, nullptr);
    void* frame;
    ::backtrace(&frame, 1);  // loads what it needs
    for (const int number : {SIGSEGV, SIGBUS, SIGILL, SIGFPE}) {
        struct sigaction action {};
        action.sa_handler = onCrash;
        action.sa_flags = SA_ONSTACK | SA_NODEFER;
        ::sigaction(number, &action, nullptr);
    }
}

bool answers(const char* stage, const char* answer) {
    if (request() != std::string(stage) + " " + answer) return false;
    static bool logged = false;
    if (!std::exchange(logged, true)) log("done");
    return true;
}

void at(const char* stage) {
    static thread_local bool busy = false;
    if (request() == kShow) show(stage);
    if (busy || request().rfind(std::string(stage) + " ", 0) != 0) return;
    for (const Deed& deed : kDeeds) {
        if (request() != std::string(stage) + " " + deed.name) continue;
        busy = true;
        log("done");
        deed.act();
        busy = false;
    }
}

}  // namespace hostile
