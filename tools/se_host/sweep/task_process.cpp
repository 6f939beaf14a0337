#include "tools/se_host/sweep/task_process.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "tools/se_host/sweep/row.h"

namespace se_host::sweep {
namespace {

constexpr const char* kSpeaker = "se_host: ";  // begins each message of the program

// In a process group of its own, so that what the engine starts ends with it. Crashes are expected: no core dumps.
[[noreturn]] void become(pid_t parent, int input, int output, int messages) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(1);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const rlimit no_core{0, 0};
    ::setrlimit(RLIMIT_CORE, &no_core);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(messages, STDERR_FILENO);
    ::execl("/proc/self/exe", "se_host", "sweep", "task", nullptr);
    ::_exit(1);
}

// The last line that begins so, without that; empty: none.
std::string lastLine(const std::string& text, const std::string& beginning) {
    std::string found;
    visitLines({}, text, [&](std::string_view line) {
        if (line.substr(0, beginning.size()) == beginning) found = line.substr(beginning.size());
    });
    return found;
}

std::string howItEnded(int wait_status) {
    if (WIFEXITED(wait_status)) return quill::stringPrintf("exit status %d", WEXITSTATUS(wait_status));
    const char* const text = ::sigdescr_np(WTERMSIG(wait_status));
    return text != nullptr ? text : quill::stringPrintf("signal %d", WTERMSIG(wait_status));
}

std::optional<Json> answerIn(const std::string& text, const std::string& key) {
    try {
        Json row = objectIn(lastLine(text, ""));
        if (row.value("key", "") == key) return row;
    } catch (const se_output::Failure&) {  // the engine wrote there
    } catch (const Json::exception&) {
    }
    return std::nullopt;
}

}  // namespace

TaskProcess::TaskProcess(Order order, double seconds)
    : order_(std::move(order)),
      seconds_(seconds),
      deadline_(Clock::now() + std::chrono::milliseconds(static_cast<int64_t>(seconds * 1000))),
      answer_(se_output::fileInMemory()),
      messages_(se_output::fileInMemory()) {
    const se_output::Descriptor input = se_output::fileInMemory();
    se_output::writeAll(input.number(), lineOf(toJson(order_)));
    ::lseek(input.number(), 0, SEEK_SET);
    const pid_t parent = ::getpid();
    process_ = ::fork();
    if (process_ == 0) become(parent, input.number(), answer_.number(), messages_.number());
    if (process_ < 0)
        throw se_output::Failure(std::string("cannot start a process: ") + std::strerror(errno));
    ::setpgid(process_, process_);  // the parent or the child, the first of them does it
}

TaskProcess::TaskProcess(TaskProcess&& other) noexcept
    : order_(std::move(other.order_)),
      seconds_(other.seconds_),
      deadline_(other.deadline_),
      is_late_(other.is_late_),
      answer_(std::move(other.answer_)),
      messages_(std::move(other.messages_)),
      process_(std::exchange(other.process_, 0)) {}

TaskProcess& TaskProcess::operator=(TaskProcess&& other) noexcept {
    std::swap(order_, other.order_);
    std::swap(seconds_, other.seconds_);
    std::swap(deadline_, other.deadline_);
    std::swap(is_late_, other.is_late_);
    std::swap(answer_, other.answer_);
    std::swap(messages_, other.messages_);
    std::swap(process_, other.process_);
    return *this;
}

TaskProcess::~TaskProcess() {
    if (process_ <= 0) return;
    ::kill(-process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

std::optional<Json> TaskProcess::row() {
    if (!is_late_ && Clock::now() >= deadline_) {
        is_late_ = true;
        ::kill(-process_, SIGKILL);
    }
    siginfo_t info{};
    ::waitid(P_PID, static_cast<id_t>(process_), &info, WEXITED | WNOHANG | WNOWAIT);
    if (info.si_pid != process_) return std::nullopt;
    ::kill(-process_, SIGKILL);  // what the engine has started
    int status = 0;
    ::waitpid(std::exchange(process_, 0), &status, 0);
    return rowAfter(status);
}

Json TaskProcess::rowAfter(int wait_status) const {
    if (is_late_) {
        return failedRow(order_,
                         quill::stringPrintf("no result within %.0f s, the process was ended", seconds_));
    }
    if (WIFEXITED(wait_status) && WEXITSTATUS(wait_status) == 0) {
        if (auto row = answerIn(se_output::contentOf(answer_.number()), order_.key)) return *row;
    }
    const std::string said = lastLine(se_output::contentOf(messages_.number()), kSpeaker);
    return failedRow(order_, se_output::oneLine(said.empty() ? "the process ended without a result (" +
                                                                   howItEnded(wait_status) + ")"
                                                             : said));
}

}  // namespace se_host::sweep
