#include "tools/se_host/output_paths.h"

#include <filesystem>
#include <set>

#include "tools/se_host/errors.h"

namespace se_host {

namespace fs = std::filesystem;

void refuseClashes(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) {
    std::error_code error;
    std::set<fs::path> seen;
    for (const std::string& output : outputs) {
        if (output.empty()) continue;
        for (const std::string& input : inputs) {
            if (input.empty() || !fs::equivalent(input, output, error)) continue;
            throw UsageError("output '" + output + "' is one of the inputs; give it another name");
        }
        if (!seen.insert(fs::weakly_canonical(fs::absolute(output), error)).second) {
            throw UsageError("'" + output + "' would be written twice; give each output its own name");
        }
    }
}

}  // namespace se_host
