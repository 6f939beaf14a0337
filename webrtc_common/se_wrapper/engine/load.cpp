#include "webrtc_common/se_wrapper/engine/load.h"

#include "common/config.h"
#include "common/cpu_info.h"
#include "common/dynlib.h"
#include "common/file.h"
#include "webrtc_common/se_wrapper/dsp/select_kernels.h"
#include "webrtc_common/se_wrapper/engine/hooks.h"
#include "webrtc_common/se_wrapper/engine/library_property.h"
#include "webrtc_common/se_wrapper/engine/resolve.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"
#include "webrtc_common/se_wrapper/table/engine_symbols.h"

namespace quill::media::se_wrapper {
namespace {

constexpr const char* kHarborBuild = "se_lib_harborv006";
constexpr const char* kBeamFormingBuild = "se_lib_beamv1.14";

// Made at the first use, so that nothing runs while the library is loaded.
std::string& givenFolder() {
    static auto* const folder = new std::string;
    return *folder;
}

void openChosenBuild() {
    const std::string name = chosenEngineBuild();
    openSignalEssenceDynamicLibrary(name);
    if (p_signal_essence_library.get().empty()) p_signal_essence_library.node()->set<std::string>(name);
}

// Null, with the reason, when it cannot be loaded or what it exports cannot be used.
DynLibHandle openEngine(const std::string& path, std::string* reason) {
    const DynLibHandle engine = loadPermanentLibrary(path, reason);
    if (engine == nullptr) return nullptr;
    const std::string objection = whyNotUsable(engine);
    if (objection.empty()) return engine;
    *reason = path + ": " + objection;
    return nullptr;
}

}  // namespace

void setEngineFolder(const std::string& folder) {
    givenFolder() = folder;
}

std::string engineFolder() {
    return givenFolder().empty() ? File::joinPath(getExePath(), "selibs") : givenFolder();
}

void openSignalEssenceDynamicLibrary(const std::string& name) {
    if (MMIfInit != nullptr) return;

    const std::string path = File::joinPath(engineFolder(), name);
    std::string reason;
    const DynLibHandle se_lib = openEngine(path, &reason);
    if (se_lib == nullptr) SE_WRAPPER_LOG(5) << reason;
    QUILL_CHECK_AT(record_sites::kLibraryNotOpened, se_lib) << "Could not open shared library at " << path;

    resolveEngineTable(se_lib);
    applyEngineGroupRules();

    SE_WRAPPER_LOG_AT(record_sites::kLibraryLoaded, 4)
        << "Successfully loaded Signal Essence Library. " << engineVersion();
}

std::string chosenEngineBuild() {
    std::string name = p_signal_essence_library.get();
    if (name.empty()) name = p_config_is_harbor.get() ? kHarborBuild : kBeamFormingBuild;
    return name;
}

void initSignalEssenceOptimForTests() {
    openChosenBuild();
    saveEngineRoutines();
    selectKernels(CPUInfo());
}

}  // namespace quill::media::se_wrapper
