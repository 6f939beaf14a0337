#include "tools/se_host/commands/noise_test_report.h"

#include <cmath>

#include "common/string_printf.h"
#include "tools/output/gnuplot.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using quill::media::se_wrapper::BLOCK_SIZE;
using quill::media::se_wrapper::NoiseTestResults;
using Json = nlohmann::ordered_json;

double valueAt(const NoiseTestReport& report, int row, int microphone) {
    return static_cast<double>(report.results.values[row * NoiseTestResults::kMicrophones + microphone]);
}

double secondsOf(const NoiseTestReport& report) {
    return static_cast<double>(report.blocks * BLOCK_SIZE) / kEngineSampleRate;
}

std::string tableText(const NoiseTestReport& report) {
    std::string text = "  row  ";
    for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
        text += stringPrintf("      mic %d", microphone);
    }
    text += "\n";
    for (int row = 0; row < NoiseTestResults::kRows; ++row) {
        text += stringPrintf("  %3d  ", row);
        for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
            text += stringPrintf(" %10.2f", valueAt(report, row, microphone));
        }
        text += "\n";
    }
    return text;
}

// One line a row: its number and its six values.
std::string dataBlock(const NoiseTestReport& report) {
    std::vector<std::vector<double>> rows;
    for (int row = 0; row < NoiseTestResults::kRows; ++row) {
        rows.push_back({static_cast<double>(row)});
        for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
            rows.back().push_back(valueAt(report, row, microphone));
        }
    }
    return se_output::plotData("results", rows);
}

// One line a value: row, microphone, value; the form that a map with cells takes.
std::string cellBlock(const NoiseTestReport& report) {
    std::vector<std::vector<double>> cells;
    for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
        for (int row = 0; row < NoiseTestResults::kRows; ++row) {
            cells.push_back({static_cast<double>(row), static_cast<double>(microphone),
                             valueAt(report, row, microphone)});
        }
    }
    return se_output::plotData("cells", cells);
}

}  // namespace

std::string toText(const NoiseTestReport& report) {
    std::string text = "wrote " + report.output;
    text += report.picture.empty() ? "\n" : " " + report.picture + "\n";
    text += "  engine    " + report.build + " (" + report.version + ")\n";
    text += "  sound     " + report.sound + "\n";
    text += stringPrintf("  test      %zu blocks, %.2f s\n", report.blocks, secondsOf(report));
    return text + "\n" + tableText(report);
}

Json toJson(const NoiseTestReport& report) {
    Json rows = Json::array();
    for (int row = 0; row < NoiseTestResults::kRows; ++row) {
        Json values = Json::array();
        for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
            const double value = valueAt(report, row, microphone);
            values.push_back(std::isfinite(value) ? Json(value) : Json(nullptr));
        }
        rows.push_back(values);
    }
    return {{"output", report.output},
            {"sound", report.sound},
            {"engine", {{"build", report.build}, {"version", report.version}}},
            {"blocks", report.blocks},
            {"seconds", secondsOf(report)},
            {"rows", rows}};
}

std::string toScript(const NoiseTestReport& report) {
    std::string script = dataBlock(report) + cellBlock(report);
    script += "set multiplot layout 2,1 title " +
              se_output::plotText("Microphone noise test of " + report.build + " on " +
                                  se_output::fileName(report.sound)) +
              "\nset lmargin at screen 0.09\nset rmargin at screen 0.86\n"
              "set xrange [-0.5:29.5]\nset xtics 0,2,29\nset xlabel 'row of the results'\n"
              "set ylabel \"value in the\\nengine's units\"\n"
              "colours = '#1f77b4 #d62728 #2ca02c #ff7f0e #9467bd #8c564b'\n"
              "set grid lt 1 lw 0.5 lc rgb '#d0d0d0'\nset key outside right center\n"
              "plot for [m=0:5] $results using 1:(column(m+2)) with linespoints pt 7 ps 0.4 lc rgb "
              "word(colours, m+1) "
              "title sprintf('mic %d', m)\n"
              "unset key\nunset grid\nset yrange [-0.5:5.5]\nset ytics 1\nset ylabel 'microphone'\n"
              "set cblabel \"value in the engine's units\"\nset palette defined (0 '#440154', 1 '#3b528b', 2 "
              "'#21918c', 3 '#5ec962', 4 '#fde725')\n"
              "set colorbox user origin 0.88,0.10 size 0.02,0.34\n"
              "plot $cells using 1:2:3 with image\nunset multiplot";
    return script;
}

}  // namespace se_host
