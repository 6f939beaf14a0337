#include "bench/engine_vs_peer/picture.h"

#include <cmath>

#include "common/string_printf.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;
using se_output::plotText;

using Rows = std::vector<const FigureRow*>;

struct Panel {
    const char* name;
    const char* title;
    bool (*shows)(const FigureRow& row);
};

bool isEcho(const FigureRow& row) {
    return row.figure.name.rfind("ERLE", 0) == 0;
}

bool isShare(const FigureRow& row) {
    return *row.figure.unit == '\0';
}

bool isDecibelsOfTalker(const FigureRow& row) {
    return std::string(row.figure.unit) == "dB" && !isEcho(row) && row.figure.name != "its spread";
}

const Panel kPanels[] = {
    {"echo", "Echo: ERLE, dB", isEcho},
    {"talker", "Talker and noise, dB", isDecibelsOfTalker},
    {"stoi", "Intelligibility (STOI); share of an amplitude", isShare},
};

constexpr int kRowPixels = 24;
constexpr int kPanelPixels = 80;  // of its title and axis
constexpr int kWidth = 1000;

Rows rowsOf(const Panel& panel, const Report& report) {
    Rows rows;
    for (const FigureRow& row : report.rows) {
        if (panel.shows(row)) rows.push_back(&row);
    }
    return rows;
}

// Value, lower and upper limit, height; the engine above the peer.
std::string pointsOf(const std::string& name, const Rows& rows, System system) {
    std::vector<std::vector<double>> points;
    for (size_t i = 0; i < rows.size(); ++i) {
        const Estimate value = rows[i]->of(system);
        const double margin = std::isnan(value.margin) ? 0 : value.margin;
        const double height = -static_cast<double>(i) + (system == kEngine ? 0.16 : -0.16);
        points.push_back({value.mean, value.mean - margin, value.mean + margin, height});
    }
    return se_output::plotData(name, points);
}

// A short line for each bound; two for a value that must be within one.
std::string boundsOf(const std::string& name, const Rows& rows) {
    std::vector<std::vector<double>> points;
    for (size_t i = 0; i < rows.size(); ++i) {
        const Target& target = rows[i]->figure.target;
        const double height = -static_cast<double>(i);
        points.push_back({target.bound, height});
        if (target.aim == Aim::kWithin) points.push_back({-target.bound, height});
    }
    return se_output::plotData(name, points);
}

std::string namesOf(const Rows& rows) {
    std::string names;
    for (size_t i = 0; i < rows.size(); ++i) {
        names += (names.empty() ? "" : ", ") + plotText(rows[i]->scene + ": " + rows[i]->figure.name) +
                 stringPrintf(" -%zu", i);
    }
    return names;
}

std::string plotOf(const Panel& panel, const Rows& rows, double bottom, double top) {
    const std::string name = panel.name;
    std::string script = pointsOf(name + "_engine", rows, kEngine) + pointsOf(name + "_peer", rows, kPeer) +
                         boundsOf(name + "_bound", rows);
    script += stringPrintf("set bmargin at screen %g\nset tmargin at screen %g\n", bottom, top);
    script += "set title " + plotText(panel.title) + " offset graph -0.5, 0 left" + "\nset ytics (" +
              namesOf(rows) + ")\n" +
              stringPrintf("set yrange [%g:0.6]\n", 0.4 - static_cast<double>(rows.size()));
    return script + "plot $" + name +
           "_bound using 1:2 with points pt 2 ps 0.9 lw 1.6 lc rgb '#d62728' title 'to reach', $" + name +
           "_engine using 1:4:2:3 with xerrorbars pt 7 ps 0.6 lw 1.6 lc rgb '#08519c' title 'engine', $" +
           name + "_peer using 1:4:2:3 with xerrorbars pt 6 ps 0.6 lw 1.2 lc rgb '#ff7f0e' title 'peer'\n";
}

}  // namespace

void draw(const Report& report, se_output::Picture& picture) {
    int height = 0;
    for (const Panel& panel : kPanels) {
        height += kPanelPixels + kRowPixels * static_cast<int>(rowsOf(panel, report).size());
    }
    std::string script =
        "set multiplot\nset border 3\nset tics nomirror\nset grid xtics ytics lt 1 lw 0.5 lc rgb '#d0d0d0'\n"
        "set key top right outside horizontal\nset lmargin at screen 0.4\nset rmargin at screen 0.97\n";
    int used = 0;
    for (const Panel& panel : kPanels) {
        const Rows rows = rowsOf(panel, report);
        if (rows.empty()) continue;
        const int top = used + kPanelPixels / 2;
        used += kPanelPixels + kRowPixels * static_cast<int>(rows.size());
        const auto fromBottom = [height](int pixels) { return 1 - static_cast<double>(pixels) / height; };
        if (&panel != kPanels) script += "set key off\n";
        script += plotOf(panel, rows, fromBottom(used - kPanelPixels / 2), fromBottom(top));
    }
    picture.draw(script + "unset multiplot\n", {kWidth, height});
}

}  // namespace engine_vs_peer
