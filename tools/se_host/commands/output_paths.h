// Outputs that would overwrite an input or each other are refused before any work.
#pragma once

#include <string>
#include <vector>

namespace se_host {

// Empty paths are options that were not given; "-" is standard input or output. fails: UsageError when an output is one
// of the inputs, two outputs are one file, or standard input would be read twice.
void refuseClashes(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);

}  // namespace se_host
