// Filling the engine interface table from a loaded library, and the rules that its groups must keep.
// Threads: [setup]. Only the loader calls these; nothing is locked.
#pragma once

#include "common/dynlib.h"

namespace quill::media::se_wrapper {

// Fills the table row by row, in the order of its list. fails: fatal at the first missing row that the engine
// must export; what was resolved before stays.
void resolveEngineTable(DynLibHandle lib);

// Checks that the rows of each group are all there or all missing, and sets the capability flags.
// fails: fatal, the check naming the group by its counter.
void applyEngineGroupRules();

}  // namespace quill::media::se_wrapper
