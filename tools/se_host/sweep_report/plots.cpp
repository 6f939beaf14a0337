#include "tools/se_host/sweep_report/plots.h"

#include <algorithm>
#include <cmath>

#include "common/string_printf.h"
#include "tools/gnuplot/gnuplot.h"
#include "tools/se_host/sweep_report/number_text.h"
#include "tools/se_host/sweep_report/quantiles.h"

namespace se_host::report {
namespace {

using quill::stringPrintf;
using se_output::plotText;

constexpr int kWidth = 900;
constexpr size_t kLongestName = 40;  // characters
constexpr size_t kMostPoints = 200;  // of a line
// Distinguishable also with colour-blind eyes (Okabe and Ito 2008), without the yellow.
constexpr const char* kColours[] = {"#0072b2", "#d55e00", "#009e73", "#cc79a7",
                                    "#56b4e9", "#e69f00", "#8c6bb1", "#7f7f7f"};

// Cut between characters of UTF-8.
std::string shortName(const std::string& name) {
    size_t characters = 0;
    for (size_t i = 0; i < name.size(); ++i) {
        if ((static_cast<unsigned char>(name[i]) & 0xc0) == 0x80) continue;
        if (++characters > kLongestName) return name.substr(0, i) + "...";
    }
    return name;
}

std::vector<double> present(const Values& values) {
    std::vector<double> there;
    for (const auto& value : values) {
        if (value) there.push_back(*value);
    }
    return there;
}

std::string axisTitle(const Measure& measure) {
    return withUnit(measure, std::string(measure.title) + (*measure.unit == '\0' ? "" : ","));
}

double numberOrNan(const std::optional<double>& value) {
    return value.value_or(std::nan(""));
}

constexpr const char* kGrid = "set grid lt 1 lw 0.5 lc rgb '#9aa5b1'\nset border 3\nset tics nomirror out\n";

}  // namespace

std::string boxPlot(const std::string& name, const Results& results, const MeasureResults& measure) {
    std::vector<std::vector<double>> boxes;
    std::string names;
    const size_t count = results.tunings.size();
    for (size_t tuning = 0; tuning < count; ++tuning) {
        const double place = static_cast<double>(count - tuning);
        names += stringPrintf("%s%s %g", names.empty() ? "" : ", ",
                              plotText(shortName(results.tunings[tuning])).c_str(), place);
        const std::optional<Quantiles> box = quantilesOf(present(measure.values[tuning]));
        if (box) boxes.push_back({place, box->low, box->first, box->median, box->third, box->high});
    }
    std::string script = se_output::plotData("boxes", boxes) + kGrid;
    script += "set grid noytics\nset ytics (" + names + ")\n";
    script += stringPrintf("set yrange [0.4:%g]\nset offsets graph 0.03, graph 0.03, 0, 0\nset nokey\n",
                           static_cast<double>(count) + 0.6);
    script += "set xlabel " + plotText(axisTitle(measure.measure)) + "\n";
    script +=
        "set style fill transparent solid 0.3 border rgb '#0072b2'\n"
        "plot $boxes using 4:1:2:6 with xerrorbars pt -1 lw 1.5 lc rgb '#0072b2',"
        " $boxes using 4:1:3:5:($1-0.3):($1+0.3) with boxxyerror fc rgb '#0072b2',"
        " $boxes using 4:($1-0.3):(0):(0.6) with vectors nohead lt -1 lw 3\n";
    return se_output::svgElement(name, script, {kWidth, 90 + 26 * static_cast<int>(count)});
}

std::string pairedPlot(const std::string& name, const Results& results,
                       const std::vector<const Comparison*>& comparisons) {
    std::string script, plots = "plot 0 with lines lt -1 lw 1 notitle";
    for (size_t line = 0; line < comparisons.size(); ++line) {
        std::vector<double> differences;
        for (const Pair& pair : comparisons[line]->pairs) differences.push_back(pair.difference);
        std::sort(differences.begin(), differences.end());
        const size_t points = std::min(differences.size(), kMostPoints);
        std::vector<std::vector<double>> rows;
        for (size_t i = 0; i < points; ++i) {
            const double share = points < 2 ? 0.5 : static_cast<double>(i) / static_cast<double>(points - 1);
            rows.push_back({100 * share, quantileOf(differences, share)});
        }
        script += se_output::plotData(stringPrintf("line%zu", line), rows);
        plots += stringPrintf(", $line%zu with lines lw 2 lc rgb '%s' title ", line,
                              kColours[line % std::size(kColours)]) +
                 plotText(shortName(results.tunings[comparisons[line]->tuning]));
    }
    const Measure& measure = results.measures[comparisons.front()->measure].measure;
    script += kGrid;
    script += "set xrange [0:100]\nset xlabel 'recordings in the order of their difference, %'\nset ylabel " +
              plotText(withUnit(measure, *measure.unit == '\0' ? "difference" : "difference,")) +
              "\nset key above horizontal\nset offsets 0, 0, graph 0.05, graph 0.05\n";
    return se_output::svgElement(name, script + plots + "\n",
                                 {kWidth, 330 + 20 * static_cast<int>(comparisons.size() / 3)});
}

std::string secondsPlot(const std::string& name, const Measure& measure,
                        const std::vector<SecondsLine>& lines) {
    std::string script, plots;
    for (size_t line = 0; line < lines.size(); ++line) {
        std::vector<std::vector<double>> rows;
        for (size_t second = 0; second < lines[line].values.size(); ++second) {
            rows.push_back({static_cast<double>(second) + 0.5, numberOrNan(lines[line].values[second])});
        }
        script += se_output::plotData(stringPrintf("line%zu", line), rows);
        plots += stringPrintf("%s $line%zu with linespoints pt 7 ps 0.6 lw 2 lc rgb '%s' title ",
                              line == 0 ? "plot" : ",", line, lines[line].colour) +
                 plotText(shortName(lines[line].title));
    }
    script += kGrid;
    script += "set xlabel 'time, s'\nset xrange [0:*]\nset ylabel " + plotText(withUnit(measure, "")) +
              "\nset key above horizontal\nset offsets 0, 0, graph 0.05, graph 0.05\n";
    return se_output::svgElement(name, script + plots + "\n", {kWidth, 260});
}

}  // namespace se_host::report
