// The pictures of docs/performance.md.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bench/routines_vs_libraries/contest.h"
#include "tools/gnuplot/gnuplot.h"

namespace routines_vs_libraries {

class Plots {
  public:
    // Construct it before the measurement, so that an error of the folder or of gnuplot is reported early.
    // fails: se_output::Failure.
    explicit Plots(const std::string& folder);

    // Draws the charts that have results, as SVG. fails: se_output::Failure.
    void draw(const std::vector<Result>& results);

  private:
    std::vector<std::unique_ptr<se_output::Picture>> pictures_;  // written when they are complete
};

}  // namespace routines_vs_libraries
