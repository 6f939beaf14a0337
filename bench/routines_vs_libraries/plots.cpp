#include "bench/routines_vs_libraries/plots.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "common/string_printf.h"
#include "host/output/errors.h"

namespace routines_vs_libraries {
namespace {

using quill::stringPrintf;
using se_output::plotText;

struct Chart {
    const char* file;
    const char* subject;  // of the results that it shows
    const char* title;
    const char* x;
    const char* y;
    const char* axes;  // in gnuplot's language
};

constexpr Chart kCharts[] = {
    {"correlation.svg", "convolve_i16_i16, 160 outputs", "FIR correlation of 16-bit samples, 160 outputs",
     "taps", "multiply-accumulates a core cycle",
     "set logscale x 2\nset xrange [7.5:560]\nset xtics "
     "(8, 16, 32, 64, 128, 256, 512)\n"},
    {"real-fft-forward.svg", "real FFT, forward", "Real FFT, forward", "n, real samples",
     "core cycles a transform",
     "set logscale xy\nset xrange [240:1100]\nset yrange [300:20000]\nset xtics (256, 320, 512, 640, 1024)\n"
     "set ytics (500, 1000, 2000, 5000, 10000, 20000)\n"},
    {"real-fft-backward.svg", "real FFT, backward", "Real FFT, backward", "n, real samples",
     "core cycles a transform",
     "set logscale xy\nset xrange [240:1100]\nset yrange [300:20000]\nset xtics (256, 320, 512, 640, 1024)\n"
     "set ytics (500, 1000, 2000, 5000, 10000, 20000)\n"},
    {"publishing-pass.svg", "publishing pass over unchanged scalars",
     "A publishing pass over unchanged scalars", "diagnostics in the tree", "core cycles a diagnostic",
     "set logscale x\nset xrange [80:125000]\nset yrange [0:]\n"
     "set xtics ('100' 100, '1,000' 1000, '10,000' 10000, '100,000' 100000)\n"},
};

// A line for each contestant; ours are solid and thicker.
struct Curve {
    std::string name;
    Role role;
    std::vector<std::vector<double>> points;
};

constexpr const char* kOurColours[] = {"#08519c", "#6baed6", "#006d2c", "#74c476", "#7a0177"};
constexpr const char* kOtherColours[] = {"#d62728", "#ff7f0e", "#9467bd", "#8c564b", "#e377c2", "#bcbd22"};

std::vector<Curve> curvesOf(const Chart& chart, const std::vector<Result>& results) {
    std::vector<Curve> curves;
    for (const Result& r : results) {
        if (r.subject != chart.subject) continue;
        auto found =
            std::find_if(curves.begin(), curves.end(), [&](const Curve& c) { return c.name == r.name; });
        if (found == curves.end()) found = curves.insert(curves.end(), {r.name, r.role, {}});
        found->points.push_back({static_cast<double>(r.value), r.amount()});
    }
    return curves;
}

// A horizontal line, with a name after its end.
struct Limit {
    std::string name;
    double value;
};

double highestOf(const std::vector<Curve>& curves) {
    double highest = 0;
    for (const Curve& curve : curves) {
        for (const auto& point : curve.points) highest = std::max(highest, point[1]);
    }
    return highest;
}

// A limit is constant. Limits that are too close for two names share a line.
std::vector<Limit> limitsOf(const std::vector<Curve>& curves) {
    const double close = highestOf(curves) / 30;
    std::vector<Limit> limits;
    for (const Curve& curve : curves) {
        if (curve.role != Role::limit) continue;
        const double value = highestOf({curve});
        const auto near = std::find_if(limits.begin(), limits.end(),
                                       [&](const Limit& l) { return std::fabs(l.value - value) < close; });
        if (near == limits.end()) {
            limits.push_back({curve.name, value});
        } else {
            near->name += "\\n" + curve.name;
        }
    }
    return limits;
}

std::string lineOf(const Limit& limit) {
    const std::string y = stringPrintf("first %g", limit.value);
    return "set arrow from graph 0, " + y + " to graph 1, " + y + " nohead dt 3 lw 1.2 lc rgb '#404040'\n" +
           "set label \"" + limit.name + "\" at graph 1.008, " + y + " left font ',9' tc rgb '#404040'\n";
}

std::string style(const Curve& curve, size_t& ours, size_t& others) {
    const bool is_ours = curve.role == Role::ours;
    const char* const colour = is_ours ? kOurColours[ours++ % std::size(kOurColours)]
                                       : kOtherColours[others++ % std::size(kOtherColours)];
    const size_t marker = is_ours ? 7 : 4 + others;
    return stringPrintf(" with linespoints lw %g dt %d pt %d ps 0.6 lc rgb '%s'", is_ours ? 2.2 : 1.4,
                        is_ours ? 1 : 2, static_cast<int>(marker), colour);
}

std::string scriptOf(const Chart& chart, const std::vector<Curve>& curves) {
    std::string script;
    std::string plot;
    const std::vector<Limit> limits = limitsOf(curves);
    for (const Limit& limit : limits) script += lineOf(limit);
    size_t ours = 0, others = 0;
    for (size_t i = 0; i < curves.size(); ++i) {
        if (curves[i].role == Role::limit) continue;
        const std::string block = "curve" + std::to_string(i);
        script += se_output::plotData(block, curves[i].points);
        plot += (plot.empty() ? "plot $" : ", $") + block + style(curves[i], ours, others) + " title " +
                plotText(curves[i].name);
    }
    script += "set title " + plotText(chart.title) + "\nset xlabel " + plotText(chart.x) + "\nset ylabel " +
              plotText(chart.y) + "\n" + chart.axes;
    script += "set grid xtics ytics lt 1 lw 0.5 lc rgb '#d0d0d0'\nset border 3\nset tics nomirror\n";
    script += "set key outside right center Left reverse samplen 2.5 spacing 1.25\n";
    if (limits.empty()) return script + plot;
    script += stringPrintf("set yrange [0:%g]\n", 1.06 * highestOf(curves));
    script += "set key outside bottom center horizontal maxcols 3\nset rmargin 18\n";
    return script + plot;
}

}  // namespace

Plots::Plots(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw se_output::Failure("cannot make the folder '" + folder + "': " + error.message());
    for (const Chart& chart : kCharts) {
        pictures_.push_back(
            std::make_unique<se_output::Picture>((std::filesystem::path(folder) / chart.file).string()));
    }
}

void Plots::draw(const std::vector<Result>& results) {
    for (size_t i = 0; i < pictures_.size(); ++i) {
        const std::vector<Curve> curves = curvesOf(kCharts[i], results);
        if (curves.empty()) continue;
        pictures_[i]->draw(scriptOf(kCharts[i], curves), {1000, 560});
        pictures_[i]->commit();
    }
}

}  // namespace routines_vs_libraries
