#include "common/logging.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <map>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <string_view>
#include <utility>

namespace quill {
namespace {

constexpr int kDefaultThreshold = 4;

// Never destroyed: destructors of static objects may still log.
struct Core {
    std::shared_mutex mutex;
    std::shared_ptr<const LogSink> sink;
    int threshold = kDefaultThreshold;
    std::map<std::string, int, std::less<>> tag_thresholds;
    // The largest threshold in force: a record above it is dropped without the lock.
    std::atomic<int> highest{kDefaultThreshold};
    std::atomic<int> next_uid{0};

    void updateHighest() {
        int level = threshold;
        for (const auto& [tag, own] : tag_thresholds) level = std::max(level, own);
        highest.store(level, std::memory_order_relaxed);
    }
};

Core& core() {
    static Core* const instance = new Core;
    return *instance;
}

const char* levelWord(int level) {
    switch (level) {
        case 1:
            return "FATAL";
        case 2:
            return "ERROR";
        case 4:
            return "NOTICE";
        case 5:
            return "TRACE";
        default:
            return "LOG";
    }
}

void writeAll(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(STDERR_FILENO, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        text.remove_prefix(static_cast<size_t>(count));
    }
}

// One write for the whole line, so that lines of several threads do not mix.
void writeToStandardError(const LogRecord& record) {
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line.exceptions(std::ios::badbit);
    line << levelWord(record.level) << " [" << record.tag << "] " << record.source << ":" << record.line
         << ": " << printable(record.text, kMostLogged) << "\n";
    writeAll(line.str());
}

// The record without its text, where there is no memory for it.
void writeWithoutMemory(const LogRecord& record) {
    char line[512];
    const int length = std::snprintf(line, sizeof(line), "%s [%s] %s:%d: (out of memory)\n",
                                     levelWord(record.level), record.tag, record.source, record.line);
    writeAll({line, std::min(sizeof(line) - 1, static_cast<size_t>(std::max(length, 0)))});
}

// Gives the call site its number. If several threads reach it together, the first number stays.
void registerCallSite(int* uid) {
    if (__atomic_load_n(uid, __ATOMIC_RELAXED) != -1) return;
    int unregistered = -1;
    const int fresh = core().next_uid.fetch_add(1, std::memory_order_relaxed);
    __atomic_compare_exchange_n(uid, &unregistered, fresh, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED);
}

}  // namespace

void setLogSink(LogSink sink) {
    auto shared = sink ? std::make_shared<const LogSink>(std::move(sink)) : nullptr;
    const std::unique_lock lock(core().mutex);
    core().sink.swap(shared);
}

void setLogThreshold(int level) {
    const std::unique_lock lock(core().mutex);
    core().threshold = level;
    core().updateHighest();
}

void setLogThreshold(const std::string& tag, int level) {
    const std::unique_lock lock(core().mutex);
    core().tag_thresholds[tag] = level;
    core().updateHighest();
}

bool isLoggerEnabled(int level, const char* tag) {
    if (level < 1 || level > core().highest.load(std::memory_order_relaxed)) return false;
    const std::shared_lock lock(core().mutex);
    const auto own = core().tag_thresholds.find(tag);
    return level <= (own != core().tag_thresholds.end() ? own->second : core().threshold);
}

LoggingStream::LoggingStream(LoggingFilter* /*filter*/, int level, const char* tag, const char* file,
                             const char* function, int line, int* uid)
    : record_{level, tag, file, function, line, {}} {
    stream_.imbue(std::locale::classic());
    registerCallSite(uid);
}

LoggingStream::~LoggingStream() {
    try {
        record_.text = stream_.str();
    } catch (const std::bad_alloc&) {
        record_.text = "(out of memory)";  // short enough to need none
    }
    std::shared_ptr<const LogSink> sink;
    {
        const std::shared_lock lock(core().mutex);
        sink = core().sink;
    }
    if (sink) {
        (*sink)(record_);
    } else {
        try {
            writeToStandardError(record_);
        } catch (const std::bad_alloc&) {
            writeWithoutMemory(record_);
        }
    }
    if (record_.level == 1) std::abort();
}

}  // namespace quill
