// Diagnostics along time: a table in comma-separated values, one line a block.
// Threads: one.
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "tools/se_host/diag_tree.h"
#include "tools/se_host/temporary_file.h"

namespace se_host {

class DiagTrace {
  public:
    // Writes under the temporary's name; the caller commits. An array takes a column for each element, an Enum
    // its number. fails: UsageError when no diagnostic matches.
    DiagTrace(const TemporaryFile& file, DiagTree& tree, const std::string& pattern);

    // After each block: what the diagnostics hold now.
    void sample(size_t block);

    // fails: Failure when something was not written.
    void finish();

  private:
    DiagTree& tree_;
    std::vector<DiagInfo> diags_;
    std::string path_;
    std::ofstream out_;
};

}  // namespace se_host
