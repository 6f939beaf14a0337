#include "pipewire/log.h"

#include <atomic>
#include <cstdio>

namespace se_pipewire {
namespace {

constexpr const char* kName = "se-echo-cancel";

// The library goes on calling after the canceller has gone, so its context cannot be the canceller.
std::atomic<spa_log*> g_records{nullptr};

spa_log_level levelOf(int level) {
    if (level <= 2) return SPA_LOG_LEVEL_ERROR;
    return level == 3 ? SPA_LOG_LEVEL_WARN : level == 4 ? SPA_LOG_LEVEL_INFO : SPA_LOG_LEVEL_DEBUG;
}

}  // namespace

void Log::write(spa_log_level level, const char* text) const {
    if (log_ == nullptr) {
        if (level <= SPA_LOG_LEVEL_WARN) std::fprintf(stderr, "%s: %s\n", kName, text);
        return;
    }
    if (level > log_->level) return;
    // The header's macros for this are an extension of the language.
    const spa_callbacks& callbacks = log_->iface.cb;
    const auto* const methods = static_cast<const spa_log_methods*>(callbacks.funcs);
    if (methods->version >= 1 && methods->logt != nullptr) {
        methods->logt(callbacks.data, level, nullptr, __FILE__, __LINE__, __func__, "%s: %s", kName, text);
    } else {
        methods->log(callbacks.data, level, __FILE__, __LINE__, __func__, "%s: %s", kName, text);
    }
}

void sendRecordsTo(const Log& log) {
    g_records = log.handle();
}

void writeRecord(void*, int level, const char* tag, const char* text) {
    Log(g_records).write(levelOf(level), (std::string(tag) + ": " + text).c_str());
}

}  // namespace se_pipewire
