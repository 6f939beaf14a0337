// `se_host sweep report`: the results of a sweep as a page.
#include <iostream>
#include <memory>

#include "host/output/output_file.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/sweep_steps.h"
#include "tools/se_host/sweep_report/page.h"

namespace se_host {
namespace {

constexpr const char* kSweepReportExamples =
    "The report is one HTML file that any browser opens, without a network.\n"
    "Examples:\n"
    "  se_host sweep report\n"
    "  se_host sweep report --out report.html --against old\n"
    "  se_host sweep report --measure talker_stoi noise_reduction_db --by room\n"
    "  se_host sweep report nightly/ --show gentle --no-pictures\n";

struct ReportOptions {
    std::string folder = kSweepFolder;
    std::string output;  // empty: report.html in the folder
    std::string against;
    std::string label = "scenario";
    std::vector<std::string> measures;
    std::string show;
    bool no_pictures = false;
};

void run(const ReportOptions& options) {
    report::Results results = report::readResults(options.folder);
    report::chooseMeasures(results, options.measures);
    se_output::OutputFile file(options.output.empty() ? options.folder + "/report.html" : options.output);
    const report::Report report = report::reportOf(std::move(results), options.against, options.label);
    const report::Listening listening(options.folder, report.results);
    file.write(report::pageOf(report, listening, {options.show, !options.no_pictures}));
    file.commit();
    (file.isStandardOutput() ? std::cerr : std::cout) << "wrote " << file.path() << "\n";
}

}  // namespace

void addSweepReport(CLI::App& sweep) {
    CLI::App* const command =
        sweep.add_subcommand("report", "Show which tuning is better, and for which recordings");
    const auto options = std::make_shared<ReportOptions>();
    addSweepFolder(*command, options->folder);
    command->add_option("-o,--out", options->output, "The page (default: report.html in FOLDER)")
        ->type_name("FILE.html");
    command
        ->add_option(
            "--against", options->against,
            "The reference that the other tunings are compared with (default: 'default', or the first)")
        ->type_name("TUNING");
    command
        ->add_option("--measure", options->measures,
                     "Only these measures, in this order; docs/measures.md lists them")
        ->type_name("NAME...");
    command->add_option("--by", options->label, "Also show the groups of recordings that this label makes")
        ->type_name("LABEL")
        ->capture_default_str();
    command
        ->add_option(
            "--show", options->show,
            "Show the recordings of this tuning that gained and lost most (default: of the tuning with the "
            "most certain difference)")
        ->type_name("TUNING");
    command->add_flag(
        "--no-pictures", options->no_pictures,
        "Draw no pictures of these recordings; each of them is processed twice for its picture");
    command->footer(kSweepReportExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
