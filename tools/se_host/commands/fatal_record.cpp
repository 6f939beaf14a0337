#include "tools/se_host/commands/fatal_record.h"

#include <unistd.h>

#include <iostream>
#include <string>

#include "common/logging.h"
#include "tools/output/one_line.h"
#include "tools/output/temporary_file.h"
#include "tools/se_host/engine/engine.h"

namespace se_host {
namespace {

constexpr int kFatal = 1;
constexpr int kError = 2;
constexpr int kTrace = 5;

// What the library has said about the build that it is loading: why it cannot.
std::string g_reason;

// What the user can do about a fatal record; null: nothing that its text does not say.
const char* adviceAt(EngineStage stage) {
    switch (stage) {
        case EngineStage::kNone:
            return nullptr;
        case EngineStage::kLoading:
            return "this engine build cannot be used, choose another one with --engine";
        case EngineStage::kLoaded:
            return "the engine is in a state that it cannot work in, please report this";
    }
    return nullptr;
}

// Ends the process here: after the sink the library would abort, which leaves a core dump for what is a
// wrong file.
void showRecord(const quill::LogRecord& record) {
    if (record.level == kTrace && engineStage() == EngineStage::kLoading) g_reason = record.text;
    if (record.level > kError) return;
    std::string text = record.text;
    if (record.level == kFatal && !g_reason.empty()) text += " (" + g_reason + ")";
    const char* const advice = adviceAt(engineStage());
    if (record.level == kFatal && advice != nullptr) text = se_output::oneLine(text) + "; " + advice;
    std::cerr << "se_host: " << se_output::oneLine(text) << std::endl;
    if (record.level != kFatal) return;
    se_output::removeTemporaryFiles();
    _exit(1);
}

}  // namespace

void installRecordSink() {
    quill::setLogSink(showRecord);
}

}  // namespace se_host
