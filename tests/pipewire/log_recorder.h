// PipeWire's log, which keeps the lines.
#pragma once

#include <spa/support/log.h>

#include <string>

namespace se_pipewire_test {

class LogRecorder {
  public:
    LogRecorder();
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    spa_log* interface() { return &log_; }

    // Warnings and errors, a line each.
    const std::string& text() const { return text_; }

    void add(const char* format, va_list values);

  private:
    spa_log log_;
    std::string text_;
};

}  // namespace se_pipewire_test
