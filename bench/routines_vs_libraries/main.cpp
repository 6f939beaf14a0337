// routines_vs_libraries: our routines compared with those of public libraries, in one process.
// Exit codes: 0 success, 1 a result is wrong or a file cannot be written, 2 wrong usage.
#include <algorithm>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/routines_vs_libraries/areas.h"
#include "bench/routines_vs_libraries/plots.h"
#include "bench/routines_vs_libraries/report.h"
#include "bench/routines_vs_libraries/session.h"
#include "host/output/errors.h"
#include "host/output/output_file.h"
#include "host/output/temporaries.h"
#include "kernel_check/program/program.h"
#include "webrtc_common/se_wrapper/dsp/select_kernels.h"

namespace routines_vs_libraries {
namespace {

constexpr const char* kDescription =
    "Times our routines, those of public libraries, plain loops and the limits of the machine.\n"
    "First each of our results is compared bit by bit with a scalar reference, and those of the libraries\n"
    "with the same reference within a tolerance. Then all that compute the same are timed in turn, in\n"
    "rounds of 60 microseconds. A figure is the upper limit of the fastest tenth of the rounds, in core\n"
    "cycles. The core's clock is measured before and after each round.";

constexpr const char* kExamples =
    "Examples:\n"
    "  routines_vs_libraries                       everything, as tables (two minutes)\n"
    "  routines_vs_libraries --quick --area fir    a quick run of one area; the figures are rough\n"
    "  routines_vs_libraries --json figures.json   the same figures for programs\n"
    "Run it on an idle machine. Other load on the same core, also that of another virtual machine, makes\n"
    "everything up to 1.6 times as slow at the same clock. --repeat keeps the better figures.";

struct Options {
    bool quick = false, markdown = false;
    int repeat = 1;
    std::string area, json, plots;
};

std::string areaNames() {
    std::string text;
    for (const Area& area : kAreas) text += std::string(text.empty() ? "" : ", ") + area.name;
    return text;
}

void addOptions(CLI::App& app, Options& options) {
    app.add_option("--area", options.area, "Only this area: " + areaNames())->type_name("NAME");
    app.add_flag("--quick", options.quick, "Few and short rounds");
    app.add_option("--repeat", options.repeat, "Number of runs; the best times are kept")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);
    app.add_flag("--markdown", options.markdown, "Print the tables as Markdown");
    app.add_option("--json", options.json, "Write all figures to this file")->type_name("FILE");
    app.add_option("--plots", options.plots, "Draw the figures into this folder, as SVG")->type_name("DIR");
    app.footer(kExamples);
}

void compare(Session& session, const std::string& only) {
    bool found = false;
    for (const Area& area : kAreas) {
        if (!only.empty() && only != area.name) continue;
        found = true;
        quill::media::se_wrapper::selectKernels(session.machine());
        session.begin(area.name);
        area.run(session);
    }
    if (!found) throw std::invalid_argument("no area '" + only + "'; use one of " + areaNames());
}

void write(se_output::OutputFile& file, const std::string& content) {
    file.write(content);
    file.commit();
}

void run(const Options& options) {
    // A file that cannot be written is reported before the measurement.
    std::optional<se_output::OutputFile> json;
    if (!options.json.empty()) json.emplace(options.json);
    std::optional<Plots> plots;
    if (!options.plots.empty()) plots.emplace(options.plots);

    Names machine = environment();
    machine.emplace_back("runs", std::to_string(options.repeat));
    Session session(options.quick);
    for (int i = 0; i < options.repeat; ++i) compare(session, options.area);
    const Findings findings = {machine, libraries(), session.results()};
    std::cout << (options.markdown ? markdownOf(findings) : textOf(findings)) << std::flush;
    if (json) write(*json, jsonOf(findings));
    if (plots) plots->draw(findings.results);
}

}  // namespace
}  // namespace routines_vs_libraries

int main(int argc, char** argv) {
    using namespace routines_vs_libraries;
    Options options;
    CLI::App app(kDescription, "routines_vs_libraries");
    addOptions(app, options);
    return program::run(app, argc, argv, [&] {
        se_output::removeTemporaryFilesOnSignals();
        run(options);
        return program::kDone;
    });
}
