#include "tools/se_host/sweep/grid.h"

#include <algorithm>
#include <set>
#include <sstream>

#include "common/string_printf.h"
#include "host/output/errors.h"

namespace se_host::sweep {
namespace {

using se_output::UsageError;

constexpr size_t kLongestName = 120;  // of a point; it becomes a file name
constexpr size_t kMostPoints = 10000;

// "noise/limit=3" as a part of a file name.
std::string partOfName(const std::string& name, const std::string& value) {
    std::string part = name.substr(name.rfind('/') + 1) + "=" + value;
    std::replace_if(
        part.begin(), part.end(), [](char c) { return c == '/' || c == ' '; }, '_');
    return part;
}

void nameThem(std::vector<Point>* points) {
    std::set<std::string> names;
    bool are_long = false;
    for (Point& point : *points) {
        for (const auto& [name, value] : point.assignments) {
            point.name += (point.name.empty() ? "" : ",") + partOfName(name, value);
        }
        are_long = are_long || point.name.size() > kLongestName || !names.insert(point.name).second;
    }
    for (size_t i = 0; are_long && i < points->size(); ++i) {
        (*points)[i].name = quill::stringPrintf("point-%04zu", i + 1);
    }
}

}  // namespace

Axis axisOf(const std::string& text) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError("'" + text + "' is not an axis of a grid; write NAME=VALUE,VALUE,...");
    }
    Axis axis{text.substr(0, equals), {}};
    std::istringstream values(text.substr(equals + 1) + ",");
    for (std::string value; std::getline(values, value, ',');) {
        const auto& before = axis.values;
        if (value.empty()) throw UsageError("'" + text + "' has an empty value");
        if (std::find(before.begin(), before.end(), value) != before.end()) {
            throw UsageError("'" + text + "' has the value " + value + " twice");
        }
        axis.values.push_back(value);
    }
    return axis;
}

std::vector<Point> pointsOf(const std::vector<Axis>& axes) {
    if (axes.empty()) return {};
    std::set<std::string> names;
    std::vector<Point> points(1);
    for (const Axis& axis : axes) {
        if (!names.insert(axis.name).second) {
            throw UsageError("'" + axis.name + "' has two axes; write its values behind one of them");
        }
        std::vector<Point> more;
        for (const Point& point : points) {
            for (const std::string& value : axis.values) {
                more.push_back(point);
                more.back().assignments.emplace_back(axis.name, value);
            }
        }
        points = std::move(more);
        if (points.size() > kMostPoints) {
            throw UsageError("the grid has more than " + std::to_string(kMostPoints) +
                             " points; give fewer values");
        }
    }
    nameThem(&points);
    return points;
}

}  // namespace se_host::sweep
