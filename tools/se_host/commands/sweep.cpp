// `se_host sweep`: recordings times tunings.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>

#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/sweep_steps.h"
#include "tools/se_host/engine/exit_status.h"

namespace se_host {
namespace {

constexpr const char* kSweepExamples =
    "Examples:\n"
    "  se_host sweep recordings/ --grid senr_nf_weight_factor_q10=100,200,300\n"
    "  se_host sweep recordings/ --far-end-channel 0 --tuning old.json new.json\n"
    "The same in steps, to use many machines, to add recordings, or to go on after an interruption:\n"
    "  se_host sweep manifest recordings/ --out recordings.jsonl\n"
    "  se_host sweep plan recordings.jsonl --tuning old.json new.json\n"
    "  se_host sweep run --backend slurm\n"
    "  se_host sweep merge\n"
    "  se_host sweep report\n"
    "The results are sweep/results.jsonl, results.csv, results.sqlite and report.html.\n"
    "'se_host sweep COMMAND --help' explains a command.\n";

struct SweepOptions {
    SweepPlanOptions plan;
    size_t jobs = 0;
    bool no_report = false;
};

// The engine stays in the process of the plan. true: this is that process, and the plan is made.
bool planInChild(const SweepPlanOptions& options) {
    std::cout.flush();
    const pid_t child = ::fork();
    if (child < 0) throw se_output::Failure("cannot start a process");
    if (child == 0) {
        planSweep(options);
        return true;
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFSIGNALED(status)) ::raise(WTERMSIG(status));
    if (WEXITSTATUS(status) != kDone) std::exit(WEXITSTATUS(status));
    return false;
}

// In this process, as another command.
[[noreturn]] void becomeReport(const std::string& folder, bool quiet) {
    std::cout.flush();
    if (quiet) ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    ::execl("/proc/self/exe", "se_host", "sweep", "report", folder.c_str(), nullptr);
    throw se_output::Failure("cannot start the report; run 'se_host sweep report " + folder + "'");
}

void run(const SweepOptions& options) {
    if (options.plan.recordings.empty()) {
        throw se_output::UsageError(
            "a folder of recordings or a command is missing; see 'se_host sweep --help'");
    }
    if (planInChild(options.plan)) return;
    SweepRunOptions run;
    run.folder = options.plan.folder;
    run.jobs = options.jobs;
    run.quiet = options.plan.quiet;
    runSweep(run);
    mergeSweep({options.plan.folder, false, options.plan.quiet});
    if (!options.no_report) becomeReport(options.plan.folder, options.plan.quiet);
}

}  // namespace

void addSweep(CLI::App& app) {
    CLI::App* const sweep =
        app.add_subcommand("sweep", "Send many recordings through an engine with many tunings");
    sweep->require_subcommand(0, 1);
    addSweepManifest(*sweep);
    addSweepPlan(*sweep);
    addSweepRun(*sweep);
    addSweepMerge(*sweep);
    addSweepReport(*sweep);
    addSweepTask(*sweep);
    const auto options = std::make_shared<SweepOptions>();
    sweep->add_option("RECORDINGS", options->plan.recordings, "A folder of recordings, or a manifest")
        ->type_name("");
    addSweepPlanOptions(*sweep, options->plan);
    addSweepJobs(*sweep, options->jobs);
    sweep->add_flag("--no-report", options->no_report, "Leave out the report");
    sweep->footer(kSweepExamples);
    sweep->callback([sweep, options] {
        if (sweep->get_subcommands().empty()) run(*options);
    });
}

}  // namespace se_host
