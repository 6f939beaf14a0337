// One-line texts to PipeWire's log, which is the journal of the service.
// Threads: any.
#pragma once

#include <spa/support/log.h>

#include <string>

namespace se_pipewire {

class Log {
  public:
    explicit Log(spa_log* log) : log_(log) {}

    void error(const std::string& text) const { write(SPA_LOG_LEVEL_ERROR, text.c_str()); }
    void warning(const std::string& text) const { write(SPA_LOG_LEVEL_WARN, text.c_str()); }
    void info(const std::string& text) const { write(SPA_LOG_LEVEL_INFO, text.c_str()); }

    void write(spa_log_level level, const char* text) const;

    spa_log* handle() const { return log_; }

  private:
    spa_log* log_;  // null: standard error
};

// Records of the engine library go to this log from now on, or to standard error when it has no handle.
void sendRecordsTo(const Log& log);

// As se_host_options_t takes it.
void writeRecord(void* context, int level, const char* tag, const char* text);

}  // namespace se_pipewire
