#include "kernel_check/program/engine.h"

#include <unistd.h>

#include <iostream>

#include "common/logging.h"
#include "common/properties.h"
#include "common/property_node.h"
#include "webrtc_common/se_wrapper/engine/library_property.h"

namespace program {
namespace {

constexpr int kFatal = 1;

}  // namespace

void startEngine(const std::string& program, const std::string& build, void (*start)()) {
    // The process ends in the sink, because the library's abort would write a core dump for a wrong file.
    quill::setLogSink([program](const quill::LogRecord& record) {
        if (record.level > kFatal) return;
        std::cerr << program << ": " << record.text << std::endl;
        _exit(1);
    });
    static const quill::PropertyNodePtr root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    if (!build.empty()) {
        quill::media::se_wrapper::p_signal_essence_library.node()->set<std::string>(build);
    }
    start();
}

}  // namespace program
