#include "tools/se_host/sweep_report/seconds.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>

namespace se_host::report {
namespace {

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream text(line + ",");
    for (std::string cell; std::getline(text, cell, ',');) cells.push_back(cell);
    return cells;
}

std::optional<double> numberIn(const std::string& cell) {
    double number = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    if (error != std::errc() || end != cell.data() + cell.size()) return std::nullopt;
    return number;
}

}  // namespace

Values secondsOf(const Results& results, size_t tuning, size_t recording, const std::string& measure) {
    std::ifstream file(results.folder + "/over-time/" + results.keys[tuning][recording] + ".csv");
    std::string line;
    std::getline(file, line);
    const std::vector<std::string> names = cellsOf(line);
    const auto column = static_cast<size_t>(std::find(names.begin(), names.end(), measure) - names.begin());
    Values values;
    while (column < names.size() && std::getline(file, line)) {
        const std::vector<std::string> cells = cellsOf(line);
        values.push_back(column < cells.size() ? numberIn(cells[column]) : std::nullopt);
    }
    return values;
}

}  // namespace se_host::report
