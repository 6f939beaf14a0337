// Bringing the engine into its working state, and the few settings that the wrapper fixes itself.
// Threads: [setup] and [control]; nothing is locked and the setters call straight into the engine.
#pragma once

#include <cstdint>
#include <string>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// Indices of the engine's receive gain and echo safety factor; 0 before initSignalEssence, which writes them.
// [any] after that.
extern SE_WRAPPER_EXPORT int32_t g_diag_gain;
extern SE_WRAPPER_EXPORT int32_t g_diag_echo_safety_factor;

// [setup] Loads the engine, puts the wrapper's routines into its hooks, starts it, and sets unity receive
// gain and the look direction. A second call loads nothing but does all the rest again.
// needs: bound static properties; no other call in progress.
// fails: fatal, as initSignalEssenceOptimForTests, and when the engine knows its receive gain or its echo
// safety factor under no name.
SE_WRAPPER_EXPORT void initSignalEssence();

// [setup] The same for a host that would rather hear of an engine without these two than end: the engine is
// initialised then, and nothing is set. result: why it was refused, as one line; empty when it was started.
SE_WRAPPER_EXPORT std::string tryInitSignalEssence();

// [control] Applies the tuning of the one engine version that needs it. needs: initSignalEssence.
// fails: a setting that the engine lacks is a level-2 record.
SE_WRAPPER_EXPORT void versionSpecificSettings();

// [control] Writes the receive gain, in the engine's units for it (Q10 by its name, 1024 = unity), unchanged.
// needs: initSignalEssence.
SE_WRAPPER_EXPORT void setGain(int16_t gain);

// [control] Writes the echo safety factor unchanged, in the engine's units for it; they differ between engine
// builds and are not converted. needs: initSignalEssence.
SE_WRAPPER_EXPORT void setEchoSafetyFactor(int16_t factor);

}  // namespace quill::media::se_wrapper
