// The results of a sweep, as results.jsonl has them: a value for each measure, tuning and recording.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/se_host/measures/measures.h"

namespace se_host::report {

using Values = std::vector<std::optional<double>>;

struct FailedRow {
    std::string recording;
    std::string tuning;
    std::string error;
};

struct MeasureResults {
    Measure measure;
    std::vector<Values> values;  // [tuning][recording]
};

struct Results {
    std::string folder;
    std::vector<std::string> tunings;                        // "default" first, the others by name
    std::vector<std::string> recordings;                     // by id
    std::vector<std::map<std::string, std::string>> labels;  // [recording]
    std::vector<std::vector<std::string>> keys;              // [tuning][recording]; empty: no such row
    std::vector<MeasureResults> measures;                    // those with a value, in the table's order
    std::vector<FailedRow> failed;
    std::set<std::string> engines;  // of all rows, in words
    std::set<std::string> programs;
    std::set<std::string> processors;
    std::string build;  // of the engine in the first row
    size_t rows = 0;

    // Index of a tuning. fails: UsageError that lists the tunings.
    size_t tuningOf(const std::string& name) const;
};

// FOLDER/results.jsonl. fails: Failure, naming file and line.
Results readResults(const std::string& folder);

// Leaves these measures only, in this order; all when the list is empty. fails: UsageError.
void chooseMeasures(Results& results, const std::vector<std::string>& names);

// The values of a label that occur, each with its recordings; recordings without it are left out.
std::map<std::string, std::vector<size_t>> groupsBy(const Results& results, const std::string& label);

}  // namespace se_host::report
