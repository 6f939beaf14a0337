// Which program computes the rows.
#pragma once

#include <string>

#include "tools/se_host/sweep/json_lines.h"

namespace se_host::sweep {

struct Program {
    std::string version;
    std::string files;  // hash of its file and of the wrapper's libraries: two builds of a version may differ
};

// fails, the first time: Failure when a file cannot be read.
const Program& thisProgram();

Json toJson(const Program& program);
Program programOf(const Json& json);

}  // namespace se_host::sweep
