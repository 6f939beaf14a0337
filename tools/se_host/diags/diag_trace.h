// Diagnostics along time: a table in comma-separated values, one line a block.
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "tools/output/temporary_file.h"
#include "tools/se_host/diags/diag_tree.h"

namespace se_host {

class DiagTrace {
  public:
    // An array takes a column for each element, an Enum its number. fails: UsageError when no diagnostic
    // matches, Failure when the file cannot be made.
    DiagTrace(const std::string& path, DiagTree& tree, const std::string& pattern);

    // After each block: what the diagnostics hold now.
    void sample(size_t block);

    // After the last block. fails: Failure when something was not written.
    void finish();

    // Gives the file its name. needs: finish. fails: Failure.
    void commit() { file_.commit(); }

  private:
    DiagTree& tree_;
    std::vector<DiagInfo> diags_;
    se_output::TemporaryFile file_;
    std::ofstream out_;
};

}  // namespace se_host
