#include "tools/se_host/sweep/plan.h"

#include <algorithm>
#include <filesystem>

#include "host/output/errors.h"

namespace se_host::sweep {
namespace {

using se_output::Failure;

constexpr int kFormat = 1;

Json toJson(const TuningChoice& tuning) {
    return {{"name", tuning.name}, {"file", tuning.file}, {"hash", tuning.hash}};
}

Plan planOf(const Json& json) {
    Plan plan;
    plan.engine = engineFileOf(json.at("engine"));
    plan.program = programOf(json.at("program"));
    for (const Json& tuning : json.at("tunings")) {
        plan.tunings.push_back({tuning.at("name"), tuning.at("file"), tuning.at("hash")});
    }
    const Json& options = json.at("options");
    plan.time_limit = {options.at("time_limit_s"), options.at("time_limit_per_second")};
    plan.shard_seconds = options.at("shard_seconds");
    plan.over_time = options.at("over_time");
    plan.tasks = json.at("tasks");
    plan.kept = json.at("kept");
    plan.shards = json.at("shards");
    return plan;
}

Task taskOf(const Json& json) {
    return {json.at("key"), json.at("shard"), json.at("recording"), json.at("tuning"), json.at("seconds")};
}

// What the library of JSON says about a field that is missing goes to the user as it is.
template <class Read>
auto readField(const std::string& path, Read read) {
    try {
        return read();
    } catch (const Json::exception& error) {
        throw Failure("'" + path + "' is damaged: " + error.what() + "; run 'se_host sweep plan' again");
    }
}

const auto kById = [](const Entry& a, const Entry& b) { return a.id < b.id; };

}  // namespace

Json toJson(const Plan& plan) {
    Json tunings = Json::array();
    for (const TuningChoice& tuning : plan.tunings) tunings.push_back(toJson(tuning));
    return {{"format", kFormat},
            {"program", toJson(plan.program)},
            {"engine", toJson(plan.engine)},
            {"tunings", tunings},
            {"options",
             {{"time_limit_s", plan.time_limit.base},
              {"time_limit_per_second", plan.time_limit.per_second},
              {"shard_seconds", plan.shard_seconds},
              {"over_time", plan.over_time}}},
            {"tasks", plan.tasks},
            {"kept", plan.kept},
            {"shards", plan.shards}};
}

Json toJson(const Task& task) {
    return {{"key", task.key},
            {"shard", task.shard},
            {"recording", task.recording},
            {"tuning", task.tuning},
            {"seconds", task.seconds}};
}

Plan readPlan(const Folder& folder) {
    if (!std::filesystem::exists(folder.plan())) {
        throw Failure("'" + folder.path() + "' holds no plan; 'se_host sweep plan' makes one");
    }
    Plan plan = readField(folder.plan(), [&] {
        const Json json = Json::parse(textOf(folder.plan()));
        if (json.at("format") == kFormat) return planOf(json);
        throw Failure("'" + folder.plan() + "' has another format; run 'se_host sweep plan' again");
    });
    const std::string& version = thisProgram().version;
    if (plan.program.version == version) return plan;
    throw Failure("'" + folder.plan() + "' was made by se_host " + plan.program.version + ", this is " +
                  version + "; run 'se_host sweep plan' again");
}

std::vector<Task> readTasks(const Folder& folder) {
    std::vector<Task> tasks;
    visitLines(folder.tasks(), textOf(folder.tasks()), [&](std::string_view line) {
        tasks.push_back(readField(folder.tasks(), [&] { return taskOf(objectIn(line)); }));
    });
    return tasks;
}

Orders::Orders(const Folder& folder, const Plan& plan)
    : folder_(folder), plan_(plan), entries_(readManifest(folder.manifest(), false)) {
    if (FileHashes().of(plan.engine.path) != plan.engine.hash) {
        throw Failure("the engine '" + plan.engine.path +
                      "' is another one than when the plan was made; run 'se_host sweep plan' again");
    }
    if (plan.program.files != thisProgram().files) {
        throw Failure("'" + folder.plan() +
                      "' was made by another build of se_host; run 'se_host sweep plan' again");
    }
    std::sort(entries_.begin(), entries_.end(), kById);
}

Order Orders::of(const Task& task) const {
    Entry wanted;
    wanted.id = task.recording;
    const auto entry = std::lower_bound(entries_.begin(), entries_.end(), wanted, kById);
    const auto tuning = std::find_if(plan_.tunings.begin(), plan_.tunings.end(),
                                     [&](const TuningChoice& one) { return one.name == task.tuning; });
    if (entry == entries_.end() || entry->id != task.recording || tuning == plan_.tunings.end()) {
        throw Failure("'" + folder_.tasks() + "' does not fit the plan; run 'se_host sweep plan' again");
    }
    // Absolute, because an engine may change the working folder.
    const auto path = [&](const std::string& name) {
        return std::filesystem::absolute(folder_.file(name)).string();
    };
    return {task.key,     *entry,
            tuning->name, tuning->file.empty() ? "" : path(tuning->file),
            plan_.engine, plan_.over_time ? path("over-time/" + task.key + ".csv") : ""};
}

}  // namespace se_host::sweep
