#include "tools/se_host/session.h"

#include "common/config.h"
#include "common/properties.h"
#include "tools/se_host/engine_files.h"
#include "tools/se_host/fatal_record.h"
#include "tools/se_host/one_line.h"
#include "tools/se_host/properties_by_text.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

constexpr const char* kBuildAdvice = "this engine build cannot be used, choose another one with --engine";
constexpr const char* kRunAdvice = "the engine is in a state that it cannot work in, please report this";

quill::PropertyNodePtr makeTree(const EngineOptions& options) {
    const quill::PropertyNodePtr root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    if (!options.engine.empty()) se::p_signal_essence_library.node()->set<std::string>(options.engine);
    if (options.device_model) quill::p_config_is_harbor.node()->set<bool>(true);
    for (const std::string& setting : options.settings) setByText(root, setting);
    return root;
}

void installExactRoutines() {
    *se::Interp1toNCore_FcnHook = se::interp1ToNCore;
    *se::AecConvolution_FcnHook = se::aecConvolution;
    *se::ComputeRFir_FcnHook = se::computeRFir;
    *se::VCMul_i16_FcnHook = se::vcmul_i16;
}

}  // namespace

Session loadSession(const EngineOptions& options) {
    Session session{makeTree(options), {}, {}};
    const std::string named = se::p_signal_essence_library.get();
    if (!named.empty()) openEngineFile(named);
    setFatalAdvice(kBuildAdvice);
    se::initSignalEssenceOptimForTests();
    setFatalAdvice(kRunAdvice);
    session.build = se::p_signal_essence_library.get();
    session.version = oneLine(se::MMIfGetVersionString());
    return session;
}

Session startSession(const EngineOptions& options) {
    Session session = loadSession(options);
    if (options.routines != Routines::kOurs) {
        if (options.routines == Routines::kEngineDft) installExactRoutines();
        se::MMIfInit(0);
        return session;
    }
    se::initSignalEssence();
    se::versionSpecificSettings();
    if (options.gain) se::setGain(*options.gain);
    if (options.echo_safety_factor) se::setEchoSafetyFactor(*options.echo_safety_factor);
    return session;
}

}  // namespace se_host
