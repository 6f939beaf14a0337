// What a path of the user means as an output: a file, or a descriptor that the process was started with.
#pragma once

#include <string>

namespace se_output {

struct OutputPlace {
    std::string path;     // with links followed
    int descriptor = -1;  // what "-", "/dev/stdout" and "/dev/fd/N" name; -1: a file
};

// Follows links as the system does, also to a target that does not exist yet. In a folder in which everybody may
// create files and only their owners remove them (as /tmp), links and files that somebody else planted are refused,
// unless they are those of the folder's owner.
// fails: std::system_error.
OutputPlace placeOf(const std::string& path);

}  // namespace se_output
