// The results as a table: a column for each field of a row, in a fixed order.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/sweep/json_lines.h"

namespace se_host::sweep {

class Table {
  public:
    // `labels`: of all recordings; the columns of labels begin with "label_".
    explicit Table(std::vector<std::string> labels);

    const std::vector<std::string>& columns() const { return columns_; }
    // A text, a number, a bool or null for each column.
    std::vector<Json> cells(const Json& row) const;

  private:
    std::vector<std::string> labels_;
    std::vector<std::string> columns_;
};

// A line of CSV, with its break.
std::string csvLine(const std::vector<Json>& cells);

}  // namespace se_host::sweep
