#include "common/assertion.h"

#include <cstdarg>
#include <fstream>
#include <memory>
#include <mutex>
#include <utility>

#include "common/logging.h"
#include "common/string_printf.h"

namespace quill {
namespace {

// Never destroyed: destructors of static objects may still assert.
struct Core {
    std::mutex mutex;
    std::shared_ptr<const AssertionHandler> handler;
};

Core& core() {
    static Core* const instance = new Core;
    return *instance;
}

bool debuggerAttached() {
    std::ifstream status("/proc/self/status");
    const std::string key = "TracerPid:";
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, key.size(), key) == 0) return std::stoi(line.substr(key.size())) != 0;
    }
    return false;
}

bool logAssertion(const AssertionRecord& record) {
    static int uid = -1;
    if (isLoggerEnabled(2, "assert")) {
        LoggingStream(nullptr, 2, "assert", record.file, record.function, record.line, &uid).stream()
            << record.text;
    }
    return debuggerAttached();
}

}  // namespace

void setAssertionHandler(AssertionHandler handler) {
    auto shared = handler ? std::make_shared<const AssertionHandler>(std::move(handler)) : nullptr;
    const std::lock_guard lock(core().mutex);
    core().handler.swap(shared);
}

bool handleAssertion(const char* file, int line, const char* function, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const AssertionRecord record{file, line, function, stringVPrintf(format, arguments)};
    va_end(arguments);

    std::shared_ptr<const AssertionHandler> handler;
    {
        const std::lock_guard lock(core().mutex);
        handler = core().handler;
    }
    return handler ? (*handler)(record) : logAssertion(record);
}

}  // namespace quill
