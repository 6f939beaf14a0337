// `se_host sweep run`: does what is missing, on this machine or by a backend.
#include <unistd.h>

#include <boost/timer/progress_display.hpp>
#include <iostream>
#include <memory>
#include <numeric>
#include <optional>
#include <set>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/sweep_steps.h"
#include "tools/se_host/sweep/backend.h"
#include "tools/se_host/sweep/run.h"

namespace se_host {
namespace {

using sweep::Folder;
using sweep::Plan;

constexpr const char* kRunExplanation =
    "A run that was ended goes on where it was. A task that fails costs a row, which says why.\n"
    "Backends are scripts: local, slurm (job arrays), parallel (GNU parallel, by ssh too), or the path\n"
    "of one of your own. All machines need the same path to the folder, the recordings and the engine.\n"
    "Examples:\n"
    "  se_host sweep run\n"
    "  SBATCH_PARTITION=long se_host sweep run --backend slurm\n"
    "  PARALLEL='--sshloginfile nodes.txt' se_host sweep run --backend parallel\n";

// A bar on a terminal, elsewhere a line a shard.
class Progress {
  public:
    Progress(size_t shards, bool quiet)
        : shards_(shards), quiet_(quiet), bar_wanted_(!quiet && ::isatty(STDERR_FILENO) != 0) {}

    sweep::RunWatch watch() {
        return {[this](size_t tasks) {
                    if (bar_wanted_ && tasks != 0) bar_.emplace(tasks, std::cerr, "");
                },
                [this](size_t tasks) {
                    if (bar_) *bar_ += tasks;
                },
                [this](size_t shard, size_t rows, size_t failed) { shardEnded(shard, rows, failed); }};
    }

    void finish() const {
        if (quiet_ || failed_ == 0) return;
        std::cout << failed_ << (failed_ == 1 ? " task has" : " tasks have") << " failed; the row says why\n";
    }

  private:
    void shardEnded(size_t shard, size_t rows, size_t failed) {
        failed_ += failed;
        if (quiet_ || bar_wanted_) return;
        std::cout << quill::stringPrintf("shard %zu of %zu: %zu rows, %zu failed", shard, shards_, rows,
                                         failed)
                  << std::endl;
    }

    size_t shards_;
    bool quiet_, bar_wanted_;
    size_t failed_ = 0;
    std::optional<boost::timer::progress_display> bar_;
};

std::vector<size_t> wantedShards(const SweepRunOptions& options, const Plan& plan) {
    for (const size_t shard : options.shards) {
        if (shard >= 1 && shard <= plan.shards) continue;
        throw se_output::UsageError(
            quill::stringPrintf("there is no shard %zu; the plan has %zu", shard, plan.shards));
    }
    if (!options.shards.empty()) {
        const std::set<size_t> distinct(options.shards.begin(), options.shards.end());
        return {distinct.begin(), distinct.end()};
    }
    std::vector<size_t> all(plan.shards);
    std::iota(all.begin(), all.end(), size_t{1});
    return all;
}

void runByBackend(const SweepRunOptions& options, const Folder& folder, const Plan& plan) {
    const std::string script = sweep::backendScript(options.backend);
    if (sweep::unfinishedShards(folder, plan).empty()) return;
    const bool succeeded = sweep::runBackend(script, folder, plan.shards);
    const size_t left = sweep::unfinishedShards(folder, plan).size();
    if (left == 0) return;
    throw se_output::Failure(quill::stringPrintf(
        "backend '%s' %s, %zu of %zu shards are not finished; run it again", options.backend.c_str(),
        succeeded ? "has ended" : "has failed", left, plan.shards));
}

}  // namespace

void runSweep(const SweepRunOptions& options) {
    const Folder folder(options.folder);
    const Plan plan = sweep::readPlan(folder);
    if (!options.backend.empty()) return runByBackend(options, folder, plan);
    Progress progress(plan.shards, options.quiet);
    sweep::runShards(folder, wantedShards(options, plan),
                     options.jobs == 0 ? sweep::usualJobs() : options.jobs, progress.watch());
    progress.finish();
}

void addSweepFolder(CLI::App& command, std::string& folder) {
    command.add_option("FOLDER", folder, "The folder of the sweep (default: sweep)")->type_name("");
}

void addSweepJobs(CLI::App& command, size_t& jobs) {
    command.add_option("--jobs", jobs, "Tasks at a time (default: as many as processors)")
        ->type_name("N")
        ->check(CLI::Range(1, 4096).description(""));
}

void addSweepRun(CLI::App& sweep) {
    CLI::App* const command = sweep.add_subcommand("run", "Do the tasks that have no row yet");
    const auto options = std::make_shared<SweepRunOptions>();
    addSweepFolder(*command, options->folder);
    CLI::Option* const shard = command->add_option("--shard", options->shards, "These shards alone, from 1");
    shard->type_name("N");
    addSweepJobs(*command, options->jobs);
    command
        ->add_option("--backend", options->backend,
                     "Do all shards by a script: a name or a path; not with --shard")
        ->type_name("NAME")
        ->excludes(shard);
    command->add_flag("--quiet", options->quiet, "No progress");
    command->footer(kRunExplanation);
    command->callback([options] { runSweep(*options); });
}

}  // namespace se_host
