#include "tests/tools/se_host/sweep_report/known_results.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>

namespace se_host_test {

Results resultsOf(const std::vector<std::string>& measures, size_t tunings, size_t recordings) {
    Results results;
    for (size_t tuning = 0; tuning < tunings; ++tuning) {
        results.tunings.push_back(tuning == 0 ? "default"
                                              : std::string(1, static_cast<char>('a' + tuning - 1)));
    }
    for (size_t recording = 0; recording < recordings; ++recording) {
        results.recordings.push_back((recording < 10 ? "r0" : "r") + std::to_string(recording));
    }
    results.labels.resize(recordings);
    for (const se_host::Measure& measure : se_host::measures()) {
        if (std::find(measures.begin(), measures.end(), measure.name) == measures.end()) continue;
        results.measures.push_back({measure, std::vector<Values>(tunings, Values(recordings))});
    }
    return results;
}

void set(Results& results, const std::string& measure, size_t tuning, const Values& values) {
    for (auto& each : results.measures) {
        if (each.measure.name == measure) each.values.at(tuning) = values;
    }
}

Values noisyValues(size_t count, double mean, double deviation, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> distribution(mean, deviation);
    Values values;
    for (size_t i = 0; i < count; ++i) values.emplace_back(distribution(random));
    return values;
}

Values plus(const Values& values, double more) {
    Values sums;
    for (const auto& value : values) sums.emplace_back(*value + more);
    return sums;
}

ResultsFolder::ResultsFolder(const std::string& text) {
    std::string name = (std::filesystem::temp_directory_path() / "sweep_report_test.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
    path_ = name;
    std::ofstream(path_ + "/results.jsonl") << text;
}

ResultsFolder::~ResultsFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

}  // namespace se_host_test
