#include "tools/se_host/commands/output_paths.h"

#include <filesystem>
#include <set>

#include "tools/output/errors.h"

namespace se_host {

namespace fs = std::filesystem;

void refuseClashes(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs) {
    std::error_code error;
    std::set<fs::path> seen;
    for (const std::string& output : outputs) {
        if (output.empty()) continue;
        for (const std::string& input : inputs) {
            if (input.empty() || !fs::equivalent(input, output, error)) continue;
            throw se_output::UsageError("output '" + output + "' is one of the inputs; give it another name");
        }
        if (!seen.insert(fs::weakly_canonical(fs::absolute(output), error)).second) {
            throw se_output::UsageError("'" + output +
                                        "' would be written twice; give each output its own name");
        }
    }
}

}  // namespace se_host
