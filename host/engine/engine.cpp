#include "host/engine/engine.h"

#include <filesystem>

#include "common/config.h"
#include "common/file.h"
#include "common/properties.h"
#include "host/engine/array_setting.h"
#include "host/engine/engine_check.h"
#include "host/engine/engine_files.h"
#include "host/engine/engine_stage.h"
#include "host/engine/installed_engines.h"
#include "host/engine/properties_by_text.h"
#include "host/output/errors.h"
#include "host/output/one_line.h"
#include "webrtc_common/se_wrapper.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

// The loader takes a relative path for one in the system's folders.
std::string absolute(const std::string& path) {
    return std::filesystem::absolute(path).string();
}

void chooseBuild(const EngineOptions& options) {
    if (!options.file.empty()) {
        const std::filesystem::path file = absolute(options.file);
        se::setEngineFolder(file.parent_path().string());
        se::p_signal_essence_library.node()->set<std::string>(file.filename().string());
        return;
    }
    se::setEngineFolder(options.folder.empty() ? defaultEngineFolder() : absolute(options.folder));
    if (!options.build.empty()) se::p_signal_essence_library.node()->set<std::string>(options.build);
}

quill::PropertyNodePtr makeTree(const EngineOptions& options) {
    const quill::PropertyNodePtr root = quill::PropertyNode::createRoot();
    quill::initStaticProperties(root);
    chooseBuild(options);
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

void requireUsable(const std::string& build) {
    const EngineCheck check = checkEngine(build, openEngineFile(build));
    if (check.objection.empty()) return;
    throw se_output::Failure("engine '" + build + "' cannot be used: " + check.objection +
                             "; ask for a complete build");
}

// A process has one engine.
void requireLoadable() {
    static auto* const loaded = new std::string;
    const std::string chosen = quill::File::joinPath(se::engineFolder(), se::chosenEngineBuild());
    if (loaded->empty() && se::MMIfInit != nullptr) *loaded = "another engine";
    if (!loaded->empty() && *loaded != chosen) {
        throw EngineInUse("this process has loaded " + *loaded +
                          ", and an engine stays loaded; use another process for " + chosen);
    }
    requireUsable(se::chosenEngineBuild());
    *loaded = chosen;
}

void startWithoutFatalRecord() {
    const std::string objection = se::tryInitSignalEssence();
    if (objection.empty()) return se::versionSpecificSettings();
    throw se_output::Failure("engine '" + se::p_signal_essence_library.get() +
                             "' cannot be used: " + objection + "; ask for a complete build");
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

Engine startCheckedEngine(const EngineOptions& options) {
    Engine engine{makeTree(options), {}, {}};
    callEngine(EngineStage::kLoading, [&] {
        requireLoadable();
        load(engine);
    });
    callEngine(EngineStage::kStarting, startWithoutFatalRecord);
    return engine;
}

}  // namespace se_host
