// The engine's hook variables: keeping the engine's own routines aside and writing ours in their place.
// Threads: [setup], while the engine runs on no other thread; nothing is locked.
#pragma once

namespace quill::media::se_wrapper {

// [setup] Sets the saved routines (saved_routines.h) to what the hook variables hold at present.
// needs: a loaded engine.
void saveEngineRoutines();

// [setup] Writes the wrapper's routines into the hook variables. An engine without the DFT hooks keeps its
// own DFT. needs: a loaded engine, not yet initialised, so that its own initialisation runs on them.
void installHooks();

}  // namespace quill::media::se_wrapper
