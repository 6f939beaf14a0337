#include "tools/se_host/sweep_report/tables.h"

#include <functional>

#include "tools/se_host/sweep_report/html.h"
#include "tools/se_host/sweep_report/number_text.h"
#include "tools/se_host/sweep_report/quantiles.h"

namespace se_host::report {
namespace {

constexpr size_t kMostFailed = 200;

std::string table(const std::string& caption, const std::string& head, const std::string& rows) {
    return element("p", caption, "class=\"caption\"") +
           element("div", element("table", element("thead", element("tr", head)) + element("tbody", rows)),
                   "class=\"wide\" tabindex=\"0\"");
}

std::string heads(const std::vector<std::string>& names) {
    std::string html;
    for (const std::string& name : names) html += element("th", escaped(name), "scope=\"col\"");
    return html;
}

std::string rowHead(const std::string& name) {
    return element("th", escaped(name), "scope=\"row\"");
}

std::optional<Quantiles> quantilesIn(const Values& values, const std::vector<size_t>& recordings) {
    std::vector<double> present;
    for (const size_t recording : recordings) {
        if (values[recording]) present.push_back(*values[recording]);
    }
    return quantilesOf(present);
}

std::string quantilesCell(const Measure& measure, const std::optional<Quantiles>& quantiles,
                          const std::string& mark) {
    if (!quantiles) return element("td", "&ndash;", "class=\"soft\"");
    const std::string range =
        valueText(measure, quantiles->low) + " to " + valueText(measure, quantiles->high);
    const std::string number = ", n = " + std::to_string(quantiles->count);
    return element("td",
                   escaped(valueText(measure, quantiles->median)) + element("small", escaped(range + number)),
                   mark.empty() ? "" : "class=\"" + mark + "\"");
}

std::string markOf(const Comparison* comparison) {
    if (comparison == nullptr || comparison->better == Better::kNeither || !comparison->isClear()) return {};
    return comparison->isGain() ? "gain" : "loss";
}

constexpr size_t kMostColumns = 6;  // of tunings; with more of them the measures are the columns

std::string measureHead(const Measure& measure, const std::string& scope) {
    const char* const direction[] = {"more is better", "less is better", ""};
    std::string html = escaped(measure.title);
    if (*measure.unit != '\0') html += ", " + escaped(measure.unit);
    const std::string better = direction[static_cast<int>(measure.better)];
    if (!better.empty()) html += " <small class=\"soft\">" + better + "</small>";
    return element("th", html,
                   "scope=\"" + scope + "\" class=\"name\" title=\"" + escaped(measure.name) + "\"");
}

std::string tuningHead(const Report& report, size_t tuning, const std::string& scope) {
    const bool is_reference = tuning == report.reference && report.results.tunings.size() > 1;
    std::string html = escaped(report.results.tunings[tuning]);
    if (is_reference) html += " <small class=\"soft\">reference</small>";
    return element("th", html, "scope=\"" + scope + "\" class=\"name\"");
}

using Cell = std::function<std::string(size_t row, size_t column)>;

std::string grid(const std::vector<std::string>& row_heads, const std::vector<std::string>& column_heads,
                 const Cell& cell, const std::string& caption) {
    std::string head = element("td", ""), rows;
    for (const std::string& column : column_heads) head += column;
    for (size_t row = 0; row < row_heads.size(); ++row) {
        std::string cells = row_heads[row];
        for (size_t column = 0; column < column_heads.size(); ++column) cells += cell(row, column);
        rows += element("tr", cells);
    }
    return table(caption, head, rows);
}

}  // namespace

std::string tuningsTable(const Report& report, const std::vector<size_t>& measures,
                         const std::vector<size_t>& recordings, const std::vector<Comparison>& comparisons,
                         const std::string& caption) {
    const Results& results = report.results;
    const bool are_columns = results.tunings.size() <= kMostColumns;
    std::vector<std::string> of_measures, of_tunings;
    for (const size_t measure : measures) {
        of_measures.push_back(measureHead(results.measures[measure].measure, are_columns ? "row" : "col"));
    }
    for (size_t tuning = 0; tuning < results.tunings.size(); ++tuning) {
        of_tunings.push_back(tuningHead(report, tuning, are_columns ? "col" : "row"));
    }
    const auto cell = [&](size_t measure, size_t tuning) {
        const MeasureResults& of = results.measures[measures[measure]];
        return quantilesCell(of.measure, quantilesIn(of.values[tuning], recordings),
                             markOf(Report::find(comparisons, measures[measure], tuning)));
    };
    if (are_columns) return grid(of_measures, of_tunings, cell, caption);
    return grid(
        of_tunings, of_measures, [&](size_t row, size_t column) { return cell(column, row); }, caption);
}

std::string comparisonTable(const Report& report, size_t measure) {
    const Measure& of = report.results.measures[measure].measure;
    const bool has_direction = of.better != Better::kNeither;
    std::string rows;
    for (const Comparison& comparison : report.comparisons) {
        if (comparison.measure != measure) continue;
        std::string row = rowHead(report.results.tunings[comparison.tuning]);
        const std::string mark = markOf(&comparison);
        row += element("td", std::to_string(comparison.pairs.size()));
        row += element("td", escaped(differenceText(of, comparison.mean)),
                       mark.empty() ? "" : "class=\"" + mark + "\"");
        row += element("td", escaped(differenceText(of, comparison.interval.low) + " to " +
                                     differenceText(of, comparison.interval.high)));
        if (has_direction) {
            row +=
                element("td", percentText(comparison.gained)) + element("td", percentText(comparison.lost));
        }
        row +=
            element("td", comparison.isSame() ? "the same" : escaped(probabilityText(comparison.by_chance)));
        rows += element("tr", row);
    }
    if (rows.empty()) return {};
    const std::string unit = *of.unit == '\0' ? "" : ", " + std::string(of.unit);
    std::vector<std::string> names{"tuning", "pairs", "mean difference" + unit, "95 % interval"};
    if (has_direction) names.insert(names.end(), {"gained", "lost"});
    names.emplace_back("by chance, corrected");
    return table("Each recording with the tuning less the same recording with " +
                     escaped(report.referenceName()) + ".",
                 heads(names), rows);
}

std::string recordingsTable(const Report& report) {
    std::string rows;
    for (size_t measure = 0; measure < report.results.measures.size(); ++measure) {
        const MeasureResults& of = report.results.measures[measure];
        if (of.measure.is_angle || !report.isSame(measure)) continue;
        std::vector<size_t> all;
        for (size_t recording = 0; recording < report.results.recordings.size(); ++recording)
            all.push_back(recording);
        const std::optional<Quantiles> quantiles = quantilesIn(of.values[report.reference], all);
        if (!quantiles) continue;
        const auto cell = [&](double value) { return element("td", escaped(valueText(of.measure, value))); };
        rows += element("tr", rowHead(withUnit(of.measure, std::string(of.measure.title) +
                                                               (*of.measure.unit == '\0' ? "" : ","))) +
                                  cell(quantiles->low) + cell(quantiles->median) + cell(quantiles->high) +
                                  element("td", std::to_string(quantiles->count)));
    }
    if (rows.empty()) return {};
    return table("What is the same with every tuning.", heads({"", "10 %", "median", "90 %", "recordings"}),
                 rows);
}

std::string failedTable(const Results& results) {
    std::string rows;
    for (size_t i = 0; i < results.failed.size() && i < kMostFailed; ++i) {
        const FailedRow& failed = results.failed[i];
        rows += element("tr", rowHead(failed.recording) +
                                  element("td", escaped(failed.tuning), "class=\"words\"") +
                                  element("td", escaped(failed.error), "class=\"words\""));
    }
    if (rows.empty()) return {};
    const bool is_cut = results.failed.size() > kMostFailed;
    return table(is_cut ? "The first " + std::to_string(kMostFailed) + " of them." : "",
                 heads({"recording", "tuning", "error"}), rows);
}

}  // namespace se_host::report
