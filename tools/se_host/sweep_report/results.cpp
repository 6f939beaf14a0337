#include "tools/se_host/sweep_report/results.h"

#include <string.h>

#include <algorithm>
#include <fstream>

#include "host/diags/json_reader.h"
#include "host/output/errors.h"

namespace se_host::report {
namespace {

using Json = nlohmann::ordered_json;
using se_output::Failure;
using se_output::UsageError;

constexpr const char* kDefault = "default";

std::string textOf(const Json& json) {
    return json.is_string() ? json.get<std::string>() : json.dump();
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

// "default" first, then by name: "gain=90" before "gain=100".
bool comesBefore(const std::string& a, const std::string& b) {
    if ((a == kDefault) != (b == kDefault)) return a == kDefault;
    const int order = ::strverscmp(a.c_str(), b.c_str());
    return order != 0 ? order < 0 : a < b;
}

// Calls `visit` for each row. They are read anew each time: all together they would take a hundred times their length.
template <typename Visit>
void visitRows(const std::string& path, Visit visit) {
    std::ifstream file(path);
    if (!file) throw Failure("cannot read '" + path + "'; 'se_host sweep merge' writes it");
    size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
        Json row;
        try {
            row = readJson(line);
            for (const char* field : {"recording", "tuning", "status", "measures"}) row.at(field);
        } catch (const std::exception& error) {
            throw Failure(path + ":" + std::to_string(number) + ": not a row of results (" + error.what() +
                          ")");
        }
        visit(row);
    }
}

// Tunings, recordings and the number of rows.
Results namesIn(const std::string& path) {
    Results results;
    std::set<std::string> tunings, recordings;
    visitRows(path, [&](const Json& row) {
        tunings.insert(textOf(row.at("tuning")));
        recordings.insert(textOf(row.at("recording")));
        if (results.rows++ == 0)
            results.build = textOf(row.value("engine", Json::object()).value("build", Json("")));
    });
    if (results.rows == 0) throw Failure("'" + path + "' has no rows; was the sweep empty?");
    results.tunings.assign(tunings.begin(), tunings.end());
    std::sort(results.tunings.begin(), results.tunings.end(), comesBefore);
    results.recordings.assign(recordings.begin(), recordings.end());
    return results;
}

template <typename Less>
size_t placeOf(const std::vector<std::string>& names, const Json& name, Less less) {
    return static_cast<size_t>(std::lower_bound(names.begin(), names.end(), textOf(name), less) -
                               names.begin());
}

std::string engineText(const Json& row) {
    const Json engine = row.value("engine", Json::object());
    return textOf(engine.value("build", Json("?"))) + ", " + textOf(engine.value("version", Json("?"))) +
           ", file " + textOf(engine.value("file", Json("?")));
}

std::string programText(const Json& row) {
    const Json program = row.value("program", Json("?"));
    if (!program.is_object()) return textOf(program);
    return textOf(program.value("version", Json("?"))) + ", files " +
           textOf(program.value("files", Json("?")));
}

std::string processorText(const Json& row) {
    const Json features = row.value("processor", Json::array());
    std::vector<std::string> words;
    for (const Json& feature : features) words.push_back(textOf(feature));
    return words.empty() ? textOf(features) : joined(words);
}

void addValues(Results& results, const Json& row, size_t tuning, size_t recording) {
    const Json& measured = row.at("measures");
    for (MeasureResults& measure : results.measures) {
        const auto value = measured.find(measure.measure.name);
        if (value != measured.end() && value->is_number()) {
            measure.values[tuning][recording] = value->get<double>();
        }
    }
}

void addRow(Results& results, const Json& row, size_t tuning, size_t recording) {
    results.engines.insert(engineText(row));
    results.programs.insert(programText(row));
    const Json labels = row.value("labels", Json::object());
    for (const auto& [name, value] : labels.items()) {
        results.labels[recording][name] = textOf(value);
    }
    if (row.at("status") == "ok") {
        results.processors.insert(processorText(row));
        addValues(results, row, tuning, recording);
        return;
    }
    results.failed.push_back({results.recordings[recording], results.tunings[tuning],
                              textOf(row.value("error", Json("no reason")))});
}

bool hasValue(const MeasureResults& measure) {
    return std::any_of(measure.values.begin(), measure.values.end(), [](const Values& values) {
        return std::any_of(values.begin(), values.end(), [](const auto& value) { return value.has_value(); });
    });
}

}  // namespace

size_t Results::tuningOf(const std::string& name) const {
    const auto found = std::find(tunings.begin(), tunings.end(), name);
    if (found != tunings.end()) return static_cast<size_t>(found - tunings.begin());
    throw UsageError("there is no tuning '" + name + "' in the results, but " + joined(tunings));
}

Results readResults(const std::string& folder) {
    const std::string path = folder + "/results.jsonl";
    Results results = namesIn(path);
    results.folder = folder;
    results.labels.resize(results.recordings.size());
    results.keys.assign(results.tunings.size(), std::vector<std::string>(results.recordings.size()));
    const std::vector<Values> nothing(results.tunings.size(), Values(results.recordings.size()));
    for (const Measure& measure : measures()) results.measures.push_back({measure, nothing});

    std::set<std::pair<size_t, size_t>> seen;
    visitRows(path, [&](const Json& row) {
        const size_t tuning = placeOf(results.tunings, row.at("tuning"), comesBefore);
        const size_t recording = placeOf(results.recordings, row.at("recording"), std::less<>());
        if (!seen.emplace(tuning, recording).second) {
            throw Failure("'" + path + "' has two rows of '" + results.recordings[recording] + "' with '" +
                          results.tunings[tuning] + "'; run 'se_host sweep merge' again");
        }
        results.keys[tuning][recording] = textOf(row.value("key", Json("")));
        addRow(results, row, tuning, recording);
    });
    auto& kept = results.measures;
    kept.erase(
        std::remove_if(kept.begin(), kept.end(), [](const auto& measure) { return !hasValue(measure); }),
        kept.end());
    return results;
}

void chooseMeasures(Results& results, const std::vector<std::string>& names) {
    if (names.empty()) return;
    std::vector<MeasureResults> chosen;
    for (const std::string& name : names) {
        const auto known = std::find_if(measures().begin(), measures().end(),
                                        [&](const Measure& measure) { return measure.name == name; });
        if (known == measures().end()) {
            throw UsageError("there is no measure '" + name + "'; docs/measures.md lists them");
        }
        const auto found = std::find_if(results.measures.begin(), results.measures.end(),
                                        [&](const auto& measure) { return measure.measure.name == name; });
        if (found == results.measures.end()) {
            throw se_output::Failure("no recording of the results has a value of '" + name +
                                     "'; choose another measure");
        }
        chosen.push_back(*found);
    }
    results.measures = std::move(chosen);
}

std::map<std::string, std::vector<size_t>> groupsBy(const Results& results, const std::string& label) {
    std::map<std::string, std::vector<size_t>> groups;
    for (size_t recording = 0; recording < results.recordings.size(); ++recording) {
        const auto found = results.labels[recording].find(label);
        if (found != results.labels[recording].end()) groups[found->second].push_back(recording);
    }
    return groups;
}

}  // namespace se_host::report
