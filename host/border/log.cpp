#include "host/border/log.h"

#include <utility>

#include "common/logging.h"

namespace se_host {

Log::Log(const se_host_options_t& options) : taken_(options.log != nullptr) {
    if (!taken_) return;
    quill::setLogSink([log = options.log, context = options.log_context](const quill::LogRecord& record) {
        log(context, record.level, record.tag, record.text.c_str());
    });
}

Log::~Log() {
    if (taken_) giveBack();
}

bool Log::keep() {
    return std::exchange(taken_, false);
}

void Log::giveBack() {
    quill::setLogSink({});
}

}  // namespace se_host
