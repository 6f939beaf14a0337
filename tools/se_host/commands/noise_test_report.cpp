#include "tools/se_host/commands/noise_test_report.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "common/string_printf.h"
#include "tools/gnuplot/gnuplot.h"
#include "tools/se_host/commands/microphones_json.h"
#include "tools/se_host/sound/resample.h"
#include "webrtc_common/se_wrapper/dsp/deinterleave.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using quill::media::se_wrapper::BLOCK_SIZE;
using quill::media::se_wrapper::kMicrophoneChannels;
using quill::media::se_wrapper::NoiseTestResults;
using Json = nlohmann::ordered_json;

constexpr double kLeastSpan = 30;  // of the picture, in the engine's units: usually decibels

constexpr int kRows = NoiseTestResults::kRows;
constexpr int kColumns = NoiseTestResults::kMicrophones;

// The microphone of each column of the engine's record: the rows 1 to 6 that the wrapper gives it.
constexpr int microphoneOf(int column) {
    return static_cast<int>(kMicrophoneChannels[column + 1]);
}

constexpr int kFirstMicrophone = 2;  // in the record; the centre one, 1, is not in it

double valueAt(const NoiseTestReport& report, int row, int microphone) {
    int column = 0;
    while (microphoneOf(column) != microphone) ++column;
    return static_cast<double>(report.results.values[row * kColumns + column]);
}

double secondsOf(const NoiseTestReport& report) {
    return static_cast<double>(report.blocks * BLOCK_SIZE) / kEngineSampleRate;
}

std::string tableText(const NoiseTestReport& report) {
    std::string text = "  row  ";
    for (int microphone = kFirstMicrophone; microphone < kFirstMicrophone + kColumns; ++microphone) {
        text += stringPrintf("      mic %d", microphone);
    }
    text += "\n";
    for (int row = 0; row < kRows; ++row) {
        text += stringPrintf("  %3d  ", row);
        for (int microphone = kFirstMicrophone; microphone < kFirstMicrophone + kColumns; ++microphone) {
            text += stringPrintf(" %10.2f", valueAt(report, row, microphone));
        }
        text += "\n";
    }
    return text;
}

// The level of every microphone over the whole sound, the centre one included, which the test leaves out.
std::string levelsText(const NoiseTestReport& report) {
    std::string text = "  levels  ";
    for (const MicrophoneCheck& check : report.microphones) {
        text += std::isinf(check.level_dbfs)
                    ? stringPrintf("  mic %d silent", check.microphone)
                    : stringPrintf("  mic %d %.1f", check.microphone, check.level_dbfs);
    }
    text += " dBFS\n";
    for (const std::string& finding : findingsOf(report.microphones)) text += "  note      " + finding + "\n";
    return text;
}

// One line a row: its number and its six values.
std::string dataBlock(const NoiseTestReport& report) {
    std::vector<std::vector<double>> rows;
    for (int row = 0; row < kRows; ++row) {
        rows.push_back({static_cast<double>(row)});
        for (int microphone = kFirstMicrophone; microphone < kFirstMicrophone + kColumns; ++microphone) {
            rows.back().push_back(valueAt(report, row, microphone));
        }
    }
    return se_output::plotData("results", rows);
}

// One line a value: row, microphone, value; the form that a map with cells takes.
std::string cellBlock(const NoiseTestReport& report) {
    std::vector<std::vector<double>> cells;
    for (int microphone = kFirstMicrophone; microphone < kFirstMicrophone + kColumns; ++microphone) {
        for (int row = 0; row < kRows; ++row) {
            cells.push_back({static_cast<double>(row), static_cast<double>(microphone),
                             valueAt(report, row, microphone)});
        }
    }
    return se_output::plotData("cells", cells);
}

// Of the values' axis and of the colours: that of the values, and no smaller than kLeastSpan, so that the small
// differences of healthy microphones look small.
std::string rangeText(const NoiseTestReport& report) {
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const float value : report.results.values) {
        if (!std::isfinite(value)) continue;
        lowest = std::min(lowest, static_cast<double>(value));
        highest = std::max(highest, static_cast<double>(value));
    }
    if (lowest > highest) return "[0:1]";  // nothing to show
    const double missing = std::max(0.0, kLeastSpan - (highest - lowest)) / 2;
    return stringPrintf("[%g:%g]", lowest - missing, highest + missing);
}

}  // namespace

std::string toText(const NoiseTestReport& report) {
    std::string text = "wrote " + report.output;
    text += report.picture.empty() ? "\n" : " " + report.picture + "\n";
    text += "  engine    " + report.build + " (" + report.version + ")\n";
    text += "  sound     " + report.sound + "\n";
    text += stringPrintf("  test      %zu blocks, %.2f s\n", report.blocks, secondsOf(report));
    text += levelsText(report);
    return text + "\n" + tableText(report);
}

Json toJson(const NoiseTestReport& report) {
    Json rows = Json::array(), microphones = Json::array();
    for (int microphone = kFirstMicrophone; microphone < kFirstMicrophone + kColumns; ++microphone) {
        microphones.push_back(microphone);
    }
    for (int row = 0; row < kRows; ++row) {
        Json values = Json::array();
        for (const int microphone : microphones) {
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
            {"columns", microphones},
            {"rows", rows},
            {"microphones", microphonesJson(report.microphones)},
            {"findings", findingsOf(report.microphones)}};
}

std::string toScript(const NoiseTestReport& report) {
    std::string script = dataBlock(report) + cellBlock(report);
    script += "set multiplot layout 2,1 title " +
              se_output::plotText("Microphone noise test of " + report.build + " on " +
                                  se_output::fileName(report.sound)) +
              "\nset lmargin at screen 0.09\nset rmargin at screen 0.86\n"
              "set xrange [-0.5:29.5]\nset xtics 0,2,29\nset xlabel 'row of the results'\n"
              "set ylabel \"value in the\\nengine's units\"\n"
              "set yrange " +
              rangeText(report) + "\nset cbrange " + rangeText(report) +
              "\ncolours = '#1f77b4 #d62728 #2ca02c #ff7f0e #9467bd #8c564b'\n"
              "set grid lt 1 lw 0.5 lc rgb '#d0d0d0'\nset key outside right center\n"
              "plot for [m=2:7] $results using 1:(column(m)) with linespoints pt 7 ps 0.4 lc rgb "
              "word(colours, m-1) "
              "title sprintf('mic %d', m)\n"
              "unset key\nunset grid\nset yrange [1.5:7.5]\nset ytics 1\nset ylabel 'microphone'\n"
              "set cblabel \"value in the engine's units\"\nset palette defined (0 '#440154', 1 '#3b528b', 2 "
              "'#21918c', 3 '#5ec962', 4 '#fde725')\n"
              "set colorbox user origin 0.88,0.10 size 0.02,0.34\n"
              "plot $cells using 1:2:3 with image\nunset multiplot";
    return script;
}

}  // namespace se_host
