// Paths: the directory of the running executable, directories of paths, joining.
#pragma once

#include <string>

#include "common/export.h"

namespace quill {

// [any] The directory that holds the running executable, as File::directoryOf gives it. fails: an empty
// string when the system does not tell the executable's path.
QUILL_COMMON_EXPORT std::string getExePath();

struct QUILL_COMMON_EXPORT File {
    // [any] The path up to its last "/", without it; "/" for a file in the root directory, empty for a name
    // alone.
    static std::string directoryOf(const std::string& path);

    // [any] `a` and `b` with exactly one "/" between them; separators at the end of `a` and at the
    // beginning of `b` are dropped.
    static std::string joinPath(const std::string& a, const std::string& b);
};

}  // namespace quill
