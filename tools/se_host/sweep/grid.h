// Tunings by values: the points of a grid of diagnostics.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace se_host::sweep {

// A diagnostic and the values that it takes in turn.
struct Axis {
    std::string name;
    std::vector<std::string> values;
};

struct Point {
    std::string name;                                              // "gain=900,limit=3"
    std::vector<std::pair<std::string, std::string>> assignments;  // in the order of the axes
};

// "name=a,b,c". fails: UsageError.
Axis axisOf(const std::string& text);

// Every combination, the last axis first; none without an axis. fails: UsageError when two axes have one name.
std::vector<Point> pointsOf(const std::vector<Axis>& axes);

}  // namespace se_host::sweep
