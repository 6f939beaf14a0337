// Diagnostics over time: a table of comma-separated values, one line a block.
#pragma once

#include <string>
#include <vector>

#include "host/diags/diag_tree.h"
#include "host/output/output_file.h"

namespace se_host {

class DiagTrace {
  public:
    // An array has a column for each element; an Enum is written as its number. fails: UsageError when no diagnostic
    // matches, Failure when the file cannot be made.
    DiagTrace(const std::string& path, DiagTree& tree, const std::string& pattern);

    // Call after each block: writes the present values. fails: Failure.
    void sample(size_t block);

    // Call after the last block: what is not yet in the file. fails: Failure.
    void finish();

    // Gives the file its name. needs: finish. fails: Failure.
    void commit() { file_.commit(); }

    const se_output::OutputFile& file() const { return file_; }

  private:
    DiagTree& tree_;
    std::vector<DiagInfo> diags_;
    se_output::OutputFile file_;
    std::string lines_;  // not yet in the file
};

}  // namespace se_host
