// The pictures of docs/performance.md.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bench/routines_vs_libraries/contest.h"
#include "tools/output/gnuplot.h"

namespace routines_vs_libraries {

class Plots {
  public:
    // Make it before the work, so that what is wrong with the folder or gnuplot is known early.
    // fails: se_output::Failure.
    explicit Plots(const std::string& folder);

    // Draws what there are results for, as SVG. fails: se_output::Failure.
    void draw(const std::vector<Result>& results);

  private:
    std::vector<std::unique_ptr<se_output::Picture>> pictures_;  // that appear once they are drawn
};

}  // namespace routines_vs_libraries
