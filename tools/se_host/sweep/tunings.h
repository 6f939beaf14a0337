// The tunings of a sweep, checked against the engine before anything runs.
// Threads: one, that of the engine.
#pragma once

#include <string>
#include <vector>

#include "host/diags/diag_tree.h"
#include "host/engine/engine.h"
#include "tools/se_host/sweep/grid.h"
#include "tools/se_host/sweep/planning.h"

namespace se_host::sweep {

inline constexpr const char* kDefaultTuning = "default";  // the engine as it comes

// That of a file has the file's name without its extension. needs: a started engine.
// fails: UsageError or Failure, naming what the engine does not have or cannot take.
TuningText tuningOfFile(const std::string& path, const DiagTree& tree);

// A tuning of the point's values alone. Edits the tree; the engine is not touched.
TuningText tuningOfPoint(const Point& point, const Engine& engine, DiagTree& tree);

// fails: UsageError.
void requireDistinctNames(const std::vector<TuningText>& tunings);

}  // namespace se_host::sweep
