#include "bench/kernel_harness/engine.h"

#include <unistd.h>

#include <iostream>

#include "common/logging.h"
#include "common/properties.h"
#include "common/property_node.h"
#include "webrtc_common/se_wrapper/engine/library_property.h"
#include "webrtc_common/se_wrapper/engine/load.h"

namespace kernel_harness {
namespace {

constexpr int kFatal = 1;

// Ends the process here, before the library aborts and leaves a core dump for what is a wrong file.
void showRecord(const quill::LogRecord& record) {
    if (record.level > kFatal) return;
    std::cerr << "kernel_harness: " << record.text << std::endl;
    _exit(1);
}

}  // namespace

void loadEngine(const std::string& name) {
    namespace se = quill::media::se_wrapper;
    quill::setLogSink(showRecord);
    static const quill::PropertyNodePtr root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    se::p_signal_essence_library.node()->set<std::string>(name);
    se::initSignalEssenceOptimForTests();
    quill::setLogSink({});
}

}  // namespace kernel_harness
