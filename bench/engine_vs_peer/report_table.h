// The cells of the report's table.
#pragma once

#include "bench/engine_vs_peer/report.h"

namespace engine_vs_peer {

using Cells = std::vector<std::string>;

extern const Cells kHead;
std::vector<Cells> cellsOf(const Report& report);

// Pairs of a name and a text: systems, machine, what was drawn.
std::vector<Cells> environmentOf(const RunText& run);

std::string targetText(const Target& target);

struct Times {
    double median, late, worst;  // late: 99 %
};
Times timesOf(const std::vector<double>& microseconds);

}  // namespace engine_vs_peer
