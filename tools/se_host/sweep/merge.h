// The results of a sweep: results.jsonl, .csv and .sqlite, written from the rows of all shards. They depend on the plan and
// the rows alone: not on the order in which, or the machines on which the rows were made.
#pragma once

#include "tools/se_host/sweep/folder.h"

namespace se_host::sweep {

struct Merged {
    size_t rows = 0;
    size_t failed = 0;   // of the rows
    size_t missing = 0;  // tasks without a row
};

// `partial`: tasks without a row are left out. fails: Failure, also when rows are missing.
Merged mergeRows(const Folder& folder, bool partial);

}  // namespace se_host::sweep
