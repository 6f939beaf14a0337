#include "tools/se_host/sound/spectrum_plot.h"

#include <algorithm>
#include <cmath>

#include "common/string_printf.h"
#include "tools/gnuplot/gnuplot.h"

namespace se_host {
namespace {

using quill::stringPrintf;

constexpr double kLowest = 20;   // Hz; lower frequencies are not audible
constexpr double kFloor = -140;  // dBFS; below is the rounding of the samples
constexpr const char* kColours[] = {"#1f77b4", "#d62728"};

std::string blockName(size_t curve) {
    return "curve" + std::to_string(curve);
}

// A logarithmic axis has no 0 Hz.
std::string blockOf(size_t curve, const Spectrum& spectrum) {
    std::vector<std::vector<double>> rows;
    for (size_t bin = 1; bin < spectrum.dbfs.size(); ++bin) {
        rows.push_back({spectrum.hertz(bin), std::max(spectrum.dbfs[bin], kFloor)});
    }
    return se_output::plotData(blockName(curve), rows);
}

// Whole tens of decibels around the curves, so that quiet sounds fill the picture as well.
std::string levelRange(const std::vector<SpectrumCurve>& curves) {
    double lowest = 0;
    double highest = kFloor;
    for (const SpectrumCurve& curve : curves) {
        const auto audible = std::min<size_t>(
            curve.spectrum.dbfs.size(), static_cast<size_t>(kLowest / curve.spectrum.hertz_per_bin) + 1);
        for (size_t bin = audible; bin < curve.spectrum.dbfs.size(); ++bin) {
            const double level = std::max(curve.spectrum.dbfs[bin], kFloor);
            lowest = std::min(lowest, level);
            highest = std::max(highest, level);
        }
    }
    lowest = std::floor(lowest / 10) * 10;
    return stringPrintf("set yrange [%g:%g]\n", lowest, std::max(std::ceil(highest / 10) * 10, lowest + 10));
}

}  // namespace

std::string spectrumScript(const std::string& title, const std::vector<SpectrumCurve>& curves) {
    const Spectrum& first = curves.front().spectrum;
    std::string script;
    for (size_t i = 0; i < curves.size(); ++i) script += blockOf(i, curves[i].spectrum);
    script += "set title " + se_output::plotText(title) + "\n";
    script += "set xlabel 'frequency in Hz'\nset ylabel 'level in dBFS (full-scale sine: 0)'\n";
    script += "set logscale x\nset xtics (20, 50, 100, 200, 500, 1000, 2000, 4000, 8000, 16000)\n";
    script += "set grid xtics ytics lt 1 lw 0.5 lc rgb '#d0d0d0'\nset key top right\n";
    script += stringPrintf("set xrange [%g:%g]\n", std::max(kLowest, first.hertz_per_bin),
                           first.hertz(first.dbfs.size()));
    script += levelRange(curves);
    const char* separator = "plot ";
    for (size_t i = 0; i < curves.size(); ++i) {
        script += separator + ("$" + blockName(i)) + " with lines lw 1.5 lc rgb '" + kColours[i % 2] +
                  "' title " + se_output::plotText(curves[i].label);
        separator = ", ";
    }
    return script;
}

}  // namespace se_host
