// Loading the engine: which build, from where, once.
// Threads: [setup], before any audio; nothing is locked. A loaded engine stays for the life of the process.
#pragma once

#include <string>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// [setup] Where the engine builds are. "", the value at first: the folder "selibs" beside the executable.
// needs: called before an engine is loaded; later calls change nothing.
SE_WRAPPER_EXPORT void setEngineFolder(const std::string& folder);

// [setup] The folder of the engine builds.
SE_WRAPPER_EXPORT std::string engineFolder();

// [setup] Loads the engine build of this file name from engineFolder() and fills the interface table. Does nothing, whatever the name, when an engine is loaded already.
// fails: fatal when there is no such library or it cannot be loaded (a level-5 record before that one says
// why), when it lacks an entry point that every build must have, or when it has only a part of a group of
// optional ones.
SE_WRAPPER_EXPORT void openSignalEssenceDynamicLibrary(const std::string& name);

// [setup] The build that is chosen: p_signal_essence_library, or when that is empty, by device model. needs: bound
// static properties.
SE_WRAPPER_EXPORT std::string chosenEngineBuild();

// [setup] Chooses the build (chosenEngineBuild(); a choice by device model is written back), loads it, keeps the engine's own routines aside (saved_routines.h) and selects the
// convolution kernels for this processor. The engine's routines stay in place. Kept on purpose: calling it
// again after other routines were installed keeps those aside instead, as that step is not guarded.
// needs: bound static properties. fails: as openSignalEssenceDynamicLibrary.
SE_WRAPPER_EXPORT void initSignalEssenceOptimForTests();

}  // namespace quill::media::se_wrapper
