#include "tools/se_host/engine/engine.h"

#include "common/config.h"
#include "common/properties.h"
#include "tools/output/one_line.h"
#include "tools/se_host/engine/array_setting.h"
#include "tools/se_host/engine/engine_files.h"
#include "tools/se_host/engine/engine_stage.h"
#include "tools/se_host/engine/properties_by_text.h"
#include "webrtc_common/se_wrapper.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

quill::PropertyNodePtr makeTree(const EngineOptions& options) {
    const quill::PropertyNodePtr root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    if (!options.build.empty()) se::p_signal_essence_library.node()->set<std::string>(options.build);
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

void load(Engine& engine) {
    const std::string named = se::p_signal_essence_library.get();
    if (!named.empty()) openEngineFile(named);
    se::initSignalEssenceOptimForTests();
    engine.build = se::p_signal_essence_library.get();
    engine.version = se_output::oneLine(se::engineVersion());
}

void start(const EngineOptions& options) {
    if (options.routines != Routines::kOurs) {
        if (options.routines == Routines::kEngineDft) installExactRoutines();
        se::MMIfInit(0);
        return;
    }
    se::initSignalEssence();
    se::versionSpecificSettings();
    if (options.gain) se::setGain(*options.gain);
    if (options.echo_safety_factor) se::setEchoSafetyFactor(*options.echo_safety_factor);
}

}  // namespace

Engine loadEngine(const EngineOptions& options) {
    Engine engine{makeTree(options), {}, {}};
    if (!options.array.empty()) giveArray(options.array);
    callEngine(EngineStage::kLoading, [&] { load(engine); });
    return engine;
}

Engine startEngine(const EngineOptions& options) {
    Engine engine = loadEngine(options);
    callEngine(EngineStage::kStarting, [&] { start(options); });
    if (!options.array.empty()) requireArrayInUse();
    return engine;
}

}  // namespace se_host
