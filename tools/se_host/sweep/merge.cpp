#include "tools/se_host/sweep/merge.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_map>

#include "host/output/errors.h"
#include "host/output/output_file.h"
#include "tools/se_host/sweep/database.h"
#include "tools/se_host/sweep/plan.h"
#include "tools/se_host/sweep/row.h"
#include "tools/se_host/sweep/shard.h"
#include "tools/se_host/sweep/table.h"

namespace se_host::sweep {
namespace {

using se_output::Failure;

constexpr size_t kMergePiece = size_t{1} << 20;

// Lines by key; of two with one key the first.
using Rows = std::unordered_map<std::string, std::string>;

Rows allRows(const Folder& folder) {
    Rows rows;
    for (const std::string& path : rowFiles(folder)) {
        visitRows(path, [&](const std::string& key, std::string_view line) { rows.emplace(key, line); });
    }
    return rows;
}

std::unordered_map<std::string, Json> labelsById(const std::vector<Entry>& entries) {
    std::unordered_map<std::string, Json> labels;
    for (const Entry& entry : entries) labels.emplace(entry.id, entry.labels);
    return labels;
}

std::vector<std::string> labelNames(const std::vector<Entry>& entries) {
    std::set<std::string> names;
    for (const Entry& entry : entries) {
        for (const auto& [name, value] : entry.labels.items()) names.insert(name);
    }
    return {names.begin(), names.end()};
}

// The three files: all of them or none.
class Results {
  public:
    Results(const Folder& folder, const std::vector<std::string>& labels)
        : table_(labels),
          lines_(folder.file("results.jsonl")),
          csv_(folder.file("results.csv")),
          sqlite_(folder.file("results.sqlite")),
          database_(table_.columns()) {
        csv_text_ = csvLine({table_.columns().begin(), table_.columns().end()});
    }

    void add(const Json& row) {
        const std::vector<Json> cells = table_.cells(row);
        lines_text_ += lineOf(row);
        csv_text_ += csvLine(cells);
        database_.add(cells);
        if (lines_text_.size() > kMergePiece) writeTexts();
    }

    void commit() {
        writeTexts();
        sqlite_.write(database_.bytes());
        for (se_output::OutputFile* const file : {&lines_, &csv_, &sqlite_}) file->commit();
    }

  private:
    void writeTexts() {
        lines_.write(std::exchange(lines_text_, {}));
        csv_.write(std::exchange(csv_text_, {}));
    }

    Table table_;
    se_output::OutputFile lines_, csv_, sqlite_;
    Database database_;
    std::string lines_text_, csv_text_;
};

[[noreturn]] void someAreMissing(const Folder& folder, size_t missing, size_t tasks) {
    throw Failure(std::to_string(missing) + " of " + std::to_string(tasks) +
                  " rows are not there yet; run 'se_host sweep run " + folder.path() +
                  "', or merge with --partial");
}

}  // namespace

Merged mergeRows(const Folder& folder, bool partial) {
    readPlan(folder);
    const std::vector<Entry> entries = readManifest(folder.manifest(), false);
    const auto labels = labelsById(entries);
    const Rows rows = allRows(folder);
    std::vector<Task> tasks = readTasks(folder);
    std::sort(tasks.begin(), tasks.end(), [](const Task& a, const Task& b) {
        return std::tie(a.recording, a.tuning) < std::tie(b.recording, b.tuning);
    });

    Merged merged;
    for (const Task& task : tasks) {
        if (rows.count(task.key) == 0) ++merged.missing;
    }
    if (merged.missing != 0 && !partial) someAreMissing(folder, merged.missing, tasks.size());

    Results results(folder, labelNames(entries));
    for (const Task& task : tasks) {
        const auto found = rows.find(task.key);
        if (found == rows.end()) continue;
        // The names are those of this plan: a row is found by content.
        Json row = objectIn(found->second);
        row["recording"] = task.recording;
        row["tuning"] = task.tuning;
        row["labels"] = labels.at(task.recording);
        ++merged.rows;
        if (hasFailed(row)) ++merged.failed;
        results.add(row);
    }
    results.commit();
    return merged;
}

}  // namespace se_host::sweep
