#include "tests/pipewire/log_recorder.h"

#include <cstdarg>
#include <cstdio>

namespace se_pipewire_test {
namespace {

__attribute__((format(printf, 7, 8))) void writeTopic(void* object, spa_log_level, const spa_log_topic*,
                                                      const char*, int, const char*, const char* format,
                                                      ...) {
    va_list values;
    va_start(values, format);
    static_cast<LogRecorder*>(object)->add(format, values);
    va_end(values);
}

constexpr spa_log_methods kMethods{1, nullptr, nullptr, writeTopic, nullptr, nullptr};

}  // namespace

LogRecorder::LogRecorder()
    : log_{{SPA_TYPE_INTERFACE_Log, SPA_VERSION_LOG, {&kMethods, this}}, SPA_LOG_LEVEL_WARN} {}

void LogRecorder::add(const char* format, va_list values) {
    char line[2048];
    std::vsnprintf(line, sizeof line, format, values);
    text_ += line;
    text_ += '\n';
}

}  // namespace se_pipewire_test
