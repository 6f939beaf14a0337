// Results of the engine's noise test, any 180 floats or none: the record, the file, and the host's table, JSON and
// picture script.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "common/logging.h"
#include "host/output/one_line.h"
#include "tests/fuzz/host/scripted_engine.h"
#include "tests/fuzz/support/entry.h"
#include "tests/fuzz/support/require.h"
#include "tests/fuzz/support/scratch_file.h"
#include "tools/se_host/commands/noise_test_report.h"
#include "webrtc_common/se_wrapper/engine/noise_test.h"

namespace quill::fuzz {
namespace {

namespace se = media::se_wrapper;
using se::NoiseTestResults;
using Json = nlohmann::ordered_json;

std::string expectedFile(const NoiseTestResults& results) {
    std::string text;
    for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
        text += "Microphone " + std::to_string(microphone) + "\n";
        for (int row = 0; row < NoiseTestResults::kRows; ++row) {
            char line[64];
            std::snprintf(
                line, sizeof line, "%d %f\n", row,
                static_cast<double>(results.values[row * NoiseTestResults::kMicrophones + microphone]));
            text += line;
        }
    }
    return text;
}

void requireFile(const NoiseTestResults* results) {
    static ScratchFile file;
    const std::string before = "as it was\n";
    file.holding(before);
    se::saveNoiseTestResults(file.path());
    std::ostringstream found;
    found << std::ifstream(file.path()).rdbuf();
    requireEqual(results == nullptr ? before : expectedFile(*results), found.str(), "the file");
}

long linesOf(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

// Of the JSON, for a column of the record.
size_t columnOf(const Json& json, int column) {
    constexpr int kMicrophoneOf[] = {3, 2, 5, 6, 7, 4};
    const auto& columns = json["columns"];
    const auto found = std::find(columns.begin(), columns.end(), kMicrophoneOf[column]);
    require(found != columns.end(), "a microphone is missing");
    return static_cast<size_t>(found - columns.begin());
}

// Every finite value is in the JSON as it is, and every other one is null.
void requireJson(const se_host::NoiseTestReport& report) {
    const std::string text = toJson(report).dump(2, ' ', false, Json::error_handler_t::replace);
    const Json json = Json::parse(text, nullptr, false);
    require(!json.is_discarded(), "the report is not JSON");
    for (int row = 0; row < NoiseTestResults::kRows; ++row) {
        for (int microphone = 0; microphone < NoiseTestResults::kMicrophones; ++microphone) {
            const auto& found = json["rows"][static_cast<size_t>(row)][columnOf(json, microphone)];
            const float value = report.results.values[row * NoiseTestResults::kMicrophones + microphone];
            const bool same = std::isfinite(value)
                                  ? found.is_number() && found.get<double>() == static_cast<double>(value)
                                  : found.is_null();
            require(same, "a value of the JSON differs");
        }
    }
}

// The texts that a user or an engine chose add no line to the table or the script.
void requireReport(const NoiseTestResults& results, Input& input) {
    const std::string version = se_output::oneLine(input.text()), sound = input.text();
    const se_host::NoiseTestReport plain{"out.txt", "", "sound", "build", "version", input.number<uint16_t>(),
                                         results,   {}};
    se_host::NoiseTestReport report = plain;
    report.version = version;
    requireEqual(linesOf(toText(plain)), linesOf(toText(report)), "lines of the table");
    report.sound = sound;
    requireEqual(linesOf(toScript(plain)), linesOf(toScript(report)), "lines of the script");
    requireJson(report);
}

void runResults(Input& input) {
    static NoiseTestResults results;
    const bool has_record = input.below(8) != 0;
    const bool sparse = input.coin();
    for (float& value : results.values) value = sparse && input.coin() ? -61.25F : input.number<float>();
    g_engine.noise_results = has_record ? &results : nullptr;

    NoiseTestResults copy{};
    requireEqual(has_record, se::getNoiseTestResults(&copy), "whether there are results");
    if (has_record) require(std::memcmp(&copy, &results, sizeof copy) == 0, "the record differs");
    requireFile(g_engine.noise_results);
    requireReport(results, input);
}

}  // namespace
}  // namespace quill::fuzz

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    quill::setLogThreshold(1);
    quill::fuzz::installScriptedEngine();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    quill::fuzz::Input input(data, size);
    quill::fuzz::runResults(input);
    return 0;
}
