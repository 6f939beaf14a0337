#include "tools/se_host/commands/fatal_record.h"

#include <unistd.h>

#include <iostream>
#include <string>

#include "common/logging.h"
#include "host/engine/engine_stage.h"
#include "host/output/one_line.h"
#include "host/output/temporaries.h"
#include "tools/se_host/engine/exit_status.h"

namespace se_host {
namespace {

// Levels of records.
constexpr int kFatal = 1;
constexpr int kError = 2;
constexpr int kNotice = 4;
constexpr int kTrace = 5;
constexpr const char* kWrapper = "se_wrapper";

// Why the engine library was not loaded: the wrapper's trace before its fatal record.
thread_local std::string g_reason;

// What the user can do about a fatal record; null: nothing beyond its text.
const char* adviceAt(EngineStage stage) {
    switch (stage) {
        case EngineStage::kNone:
            return nullptr;
        case EngineStage::kLoading:
            return "this engine build cannot be used, choose another one with --engine";
        default:
            return "the engine is in a state that it cannot work in, please report this";
    }
}

// Traces cost time and have no other use, so they are disabled after loading.
void keepReason(const quill::LogRecord& record) {
    if (record.level != kTrace) return;
    if (engineStage() == EngineStage::kLoading) g_reason = record.text;
    if (engineStage() > EngineStage::kLoading) quill::setLogThreshold(kWrapper, kNotice);
}

std::string fatalText(const std::string& text) {
    const std::string reason = g_reason.empty() ? "" : " (" + g_reason + ")";
    const char* const advice = adviceAt(engineStage());
    return se_output::oneLine(text) + reason +
           (advice == nullptr ? std::string() : std::string("; ") + advice);
}

// Ends the process here, because after the sink the library would abort and write a core dump for a wrong
// file.
void showRecord(const quill::LogRecord& record) {
    if (record.level > kError) {
        keepReason(record);
        return;
    }
    const std::string text = record.level == kFatal ? fatalText(record.text) : record.text;
    std::cerr << "se_host: " << se_output::oneLine(text) << std::endl;
    if (record.level != kFatal) return;
    se_output::removeTemporaryFiles();
    noteEnd(kFailure);
    _exit(kFailure);
}

}  // namespace

void installRecordSink() {
    quill::setLogThreshold(kWrapper, kTrace);
    quill::setLogSink(showRecord);
}

}  // namespace se_host
