#include "tools/se_host/commands/output_paths.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "host/output/errors.h"

namespace se_host {

namespace {

namespace fs = std::filesystem;

constexpr const char* kStandard = "-";  // standard input or output
constexpr const char* kNull = "/dev/null";

void refuseSecondReading(const std::vector<std::string>& inputs) {
    if (std::count(inputs.begin(), inputs.end(), kStandard) < 2) return;
    throw se_output::UsageError("'-' is named twice; standard input can be read once");
}

void refuseInput(const std::string& output, const std::vector<std::string>& inputs) {
    std::error_code error;
    for (const std::string& input : inputs) {
        if (input.empty() || input == kStandard || !fs::equivalent(input, output, error)) continue;
        throw se_output::UsageError("output '" + output + "' is one of the inputs; give it another name");
    }
}

fs::path comparable(const std::string& output) {
    std::error_code error;
    return fs::weakly_canonical(fs::absolute(output == kStandard ? "/dev/stdout" : output), error);
}

}  // namespace

void refuseClashes(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) {
    refuseSecondReading(inputs);
    std::set<fs::path> seen;
    for (const std::string& output : outputs) {
        if (output.empty() || output == kNull) continue;
        if (output != kStandard) refuseInput(output, inputs);
        if (!seen.insert(comparable(output)).second) {
            throw se_output::UsageError("'" + output +
                                        "' would be written twice; give each output its own name");
        }
    }
}

}  // namespace se_host
