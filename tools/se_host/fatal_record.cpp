#include "tools/se_host/fatal_record.h"

#include <unistd.h>

#include <atomic>
#include <iostream>
#include <string>

#include "common/logging.h"
#include "tools/se_host/one_line.h"
#include "tools/se_host/temporary_file.h"

namespace se_host {
namespace {

constexpr int kFatal = 1;
constexpr int kError = 2;

std::atomic<const char*> g_advice{nullptr};

// Ends the process here: after the sink the library would abort, which leaves a core dump for what is a
// wrong file.
void showRecord(const quill::LogRecord& record) {
    if (record.level > kError) return;
    std::string text = record.text;
    const char* const advice = g_advice;
    if (record.level == kFatal && advice != nullptr) text = oneLine(text) + "; " + advice;
    std::cerr << "se_host: " << oneLine(text) << std::endl;
    if (record.level != kFatal) return;
    removeTemporaryFiles();
    _exit(1);
}

}  // namespace

void installRecordSink() {
    quill::setLogSink(showRecord);
}

void setFatalAdvice(const char* advice) {
    g_advice = advice;
}

}  // namespace se_host
