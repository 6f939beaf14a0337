#include "tools/se_host/sweep/planning.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "host/output/errors.h"
#include "host/output/output_file.h"
#include "tools/se_host/sound/audio_file.h"
#include "tools/se_host/sweep/row.h"
#include "tools/se_host/sweep/shard.h"

namespace se_host::sweep {
namespace {

namespace fs = std::filesystem;
using se_output::Failure;

constexpr double kStart = 1;  // what the start of a process counts, in seconds of sound

void write(const std::string& path, const std::string& text) {
    se_output::OutputFile file(path);
    file.write(text);
    file.commit();
}

void requireSweepOrEmpty(const Folder& folder) {
    fs::create_directories(folder.path());
    if (fs::is_empty(folder.path()) || fs::exists(folder.plan()) || fs::exists(folder.kept())) return;
    throw Failure("'" + folder.path() + "' holds something else than a sweep; give another --folder");
}

// Moves every row into one file; of two with one key the first. result: the keys.
std::set<std::string> keepRows(const Folder& folder, bool retry_failed) {
    std::map<std::string, std::string> rows;
    for (const std::string& path : rowFiles(folder)) {
        visitRows(path, [&](const std::string& key, std::string_view line) {
            if (retry_failed && hasFailed(objectIn(line))) return;
            rows.emplace(key, std::string(line) + "\n");
        });
    }
    std::string text;
    std::set<std::string> keys;
    for (const auto& [key, line] : rows) {
        text += line;
        keys.insert(key);
    }
    write(folder.kept(), text);
    fs::remove(folder.plan());
    fs::remove_all(folder.shards());
    return keys;
}

std::vector<TuningChoice> writeTunings(const Folder& folder, const std::vector<TuningText>& tunings) {
    fs::remove_all(folder.tunings());
    fs::create_directories(folder.tunings());
    std::vector<TuningChoice> choices;
    for (const TuningText& tuning : tunings) {
        TuningChoice choice{tuning.name, {}, {}};
        if (!tuning.text.empty()) {
            choice.file = "tunings/" + tuning.name + ".json";
            choice.hash = hashOf(tuning.text);
            write(folder.file(choice.file), tuning.text);
        }
        choices.push_back(choice);
    }
    return choices;
}

// A recording that cannot be read fails when its turn comes.
double secondsOf(const Entry& entry) {
    try {
        return statedSeconds(entry.recording.input);
    } catch (const Failure&) {
        return 0;
    }
}

class Shards {
  public:
    explicit Shards(double seconds) : most_(seconds) {}

    // For a task of this length.
    size_t next(double seconds) {
        if (count_ == 0 || filled_ >= most_) {
            ++count_;
            filled_ = 0;
        }
        filled_ += seconds + kStart;
        return count_;
    }
    size_t count() const { return count_; }

  private:
    double most_;
    double filled_ = 0;
    size_t count_ = 0;
};

}  // namespace

Plan makePlan(const Folder& folder, PlanRequest request) {
    requireSweepOrEmpty(folder);
    requireIdle(folder);
    FileHashes files;
    request.engine.hash = files.of(request.engine.path);
    std::sort(request.entries.begin(), request.entries.end(),
              [](const Entry& a, const Entry& b) { return a.id < b.id; });

    const std::set<std::string> kept = keepRows(folder, request.retry_failed);
    Plan plan{request.engine,
              thisProgram(),
              writeTunings(folder, request.tunings),
              request.time_limit,
              request.shard_seconds,
              request.over_time,
              0,
              0,
              0};
    se_output::OutputFile manifest(folder.manifest());
    writeManifest(manifest, request.entries);
    manifest.commit();
    fs::create_directories(folder.shards());
    if (plan.over_time) fs::create_directories(folder.overTime());

    Shards shards(plan.shard_seconds);
    const Orders orders(folder, plan);
    std::string tasks;
    for (size_t i = 0; i < request.entries.size(); ++i) {
        const double seconds = secondsOf(request.entries[i]);
        for (const TuningChoice& tuning : plan.tunings) {
            Task task{{}, 0, request.entries[i].id, tuning.name, seconds};
            task.key = keyOf(orders.of(task), files);
            const bool is_kept = kept.count(task.key) != 0;
            if (is_kept) {
                ++plan.kept;
            } else {
                task.shard = shards.next(seconds);
            }
            ++plan.tasks;
            tasks += lineOf(toJson(task));
        }
        if (request.after_recording) request.after_recording(i);
    }
    plan.shards = shards.count();
    write(folder.tasks(), tasks);
    write(folder.plan(), toJson(plan).dump(2) + "\n");
    return plan;
}

}  // namespace se_host::sweep
