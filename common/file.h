// Paths: the running executable's directory, and joining.
// Threads: any.
#pragma once

#include <string>

#include "common/export.h"

namespace quill {

// [any] The directory that holds the running executable, without a separator at its end. fails: an empty
// string when the system does not tell.
QUILL_COMMON_EXPORT std::string getExePath();

struct QUILL_COMMON_EXPORT File {
    // [any] `a` and `b` with exactly one "/" between them, whatever stands at the joint.
    static std::string joinPath(const std::string& a, const std::string& b);
};

}  // namespace quill
