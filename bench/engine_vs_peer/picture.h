// The figures of both systems with their confidence intervals, and what the engine's have to reach.
#pragma once

#include "bench/engine_vs_peer/report.h"
#include "tools/gnuplot/gnuplot.h"

namespace engine_vs_peer {

// fails: se_output::Failure.
void draw(const Report& report, se_output::Picture& picture);

}  // namespace engine_vs_peer
