// `se_host sweep plan`: the tasks of a sweep, checked against the engine.
#include <unistd.h>

#include <boost/timer/progress_display.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>

#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/sweep_steps.h"
#include "tools/se_host/sweep/tunings.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPlanExplanation =
    "A plan in the same folder with more recordings or tunings keeps the rows that are there.\n"
    "Examples:\n"
    "  se_host sweep plan recordings.jsonl --tuning tunings/*.json\n"
    "  se_host sweep plan recordings.jsonl --grid seout_gain_q10=512,2048 --grid aec_bypass=0,1\n";

std::vector<sweep::Entry> entriesOf(const SweepPlanOptions& options) {
    if (fs::is_directory(options.recordings))
        return sweep::recordingsBelow(options.recordings, options.far_end);
    if (options.far_end.channel) {
        throw se_output::UsageError(
            "--far-end-channel is for a folder; a manifest says it for each recording");
    }
    return sweep::readManifest(options.recordings, true);
}

std::vector<sweep::Point> gridOf(const SweepPlanOptions& options) {
    std::vector<sweep::Axis> axes;
    for (const std::string& axis : options.grid) axes.push_back(sweep::axisOf(axis));
    return sweep::pointsOf(axes);
}

std::vector<sweep::TuningText> tuningsOf(const SweepPlanOptions& options,
                                         const std::vector<sweep::Point>& points, const Engine& engine) {
    DiagTree tree;
    std::vector<sweep::TuningText> tunings;
    if (!options.no_default) tunings.push_back({sweep::kDefaultTuning, {}});
    for (const std::string& path : options.tunings) tunings.push_back(sweep::tuningOfFile(path, tree));
    for (const sweep::Point& point : points) tunings.push_back(sweep::tuningOfPoint(point, engine, tree));
    sweep::requireDistinctNames(tunings);
    return tunings;
}

sweep::EngineFile fileOf(const Engine& engine, const EngineOptions& options) {
    namespace se = quill::media::se_wrapper;
    const fs::path path = fs::path(se::engineFolder()) / engine.build;
    return {fs::absolute(path).lexically_normal().string(),
            {},
            engine.build,
            engine.version,
            options.device_model,
            options.array.empty() ? "" : fs::absolute(options.array).string()};
}

std::string counted(size_t count, const char* name) {
    return std::to_string(count) + " " + name + (count == 1 ? "" : "s");
}

}  // namespace

void planSweep(const SweepPlanOptions& options) {
    superviseEngine(options.engine.supervision);
    sweep::PlanRequest request;
    request.entries = entriesOf(options);
    const std::vector<sweep::Point> points = gridOf(options);
    if (options.no_default && options.tunings.empty() && points.empty()) {
        throw se_output::UsageError("--no-default leaves no tuning; give --tuning or --grid");
    }
    const Engine engine = startEngine(options.engine);
    request.tunings = tuningsOf(options, points, engine);
    request.engine = fileOf(engine, options.engine);
    request.time_limit = options.time_limit;
    request.shard_seconds = options.shard_seconds;
    request.over_time = options.over_time;
    request.retry_failed = options.retry_failed;
    std::optional<boost::timer::progress_display> progress;
    if (!options.quiet && ::isatty(STDERR_FILENO) != 0)
        progress.emplace(request.entries.size(), std::cerr, "");
    request.after_recording = [&](size_t) {
        if (progress) ++*progress;
    };
    const size_t recordings = request.entries.size();
    const sweep::Plan plan = sweep::makePlan(sweep::Folder(options.folder), std::move(request));
    if (options.quiet) return;
    std::cout << "planned " << counted(plan.tasks, "task") << ": " << counted(recordings, "recording") << ", "
              << counted(plan.tunings.size(), "tuning") << "; " << plan.kept << " rows are there, "
              << counted(plan.shards, "shard") << " to do\n";
}

void addSweepPlanOptions(CLI::App& command, SweepPlanOptions& options) {
    addFarEndChoice(command, options.far_end);
    command.add_option("--folder", options.folder, "The folder of the sweep (default: sweep)")
        ->type_name("FOLDER");
    command
        .add_option("--tuning", options.tunings,
                    "Tuning files, each a tuning; 'se_host diags dump' writes one")
        ->type_name("FILE.json");
    command
        .add_option("--grid", options.grid,
                    "A diagnostic and the values that it takes; given several times: all combinations")
        ->type_name("NAME=A,B,C")
        ->expected(1)
        ->take_all();
    command.add_flag("--no-default", options.no_default,
                     "Leave out the tuning 'default', the engine as it comes");
    command
        .add_option("--time-limit", options.time_limit.base,
                    "Seconds that a task may take, beside 5 s for each second of the recording (default: 60)")
        ->type_name("S")
        ->check(CLI::Range(1, 86400).description(""));
    command
        .add_option("--shard-seconds", options.shard_seconds,
                    "Seconds of sound in a shard, which one run of a backend does (default: 7200)")
        ->type_name("S")
        ->check(CLI::PositiveNumber.description(""));
    command.add_flag("--over-time", options.over_time,
                     "Also write the measures of each second, a CSV for each task");
    command.add_flag("--retry-failed", options.retry_failed, "Do the tasks that have failed once more");
    addEngineChoice(command, options.engine);
    addArray(command, options.engine.array);
    command.add_flag("--quiet", options.quiet, "No progress and no summary");
}

void addSweepPlan(CLI::App& sweep) {
    CLI::App* const command =
        sweep.add_subcommand("plan", "Make the tasks: every recording of a manifest with every tuning");
    const auto options = std::make_shared<SweepPlanOptions>();
    command
        ->add_option("MANIFEST", options->recordings,
                     "The recordings, as 'se_host sweep manifest' lists them, or their folder")
        ->required()
        ->type_name("");
    addSweepPlanOptions(*command, *options);
    command->footer(kPlanExplanation);
    command->callback([options] { planSweep(*options); });
}

}  // namespace se_host
