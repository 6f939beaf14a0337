// An input of a program: a file, or standard input when the path is "-".
#pragma once

#include <string>
#include <string_view>

#include "host/output/descriptor.h"

namespace se_output {

// "cannot read '-': WHY" and the like.
[[noreturn]] void cannotRead(const std::string& path, const std::string& why);

// What makes sense as an input of a program.
struct InputKind {
    const char* advice;  // ends the message about what cannot be read: "give a WAV or FLAC file"
    size_t most_bytes;   // of a stream, which is kept in memory
    // Whether a stream that begins so is worth being read to its end; `beginning` has 4 bytes or is all of it.
    bool (*acceptsBeginning)(std::string_view beginning);
};

// The content from its beginning on. A pipe or a terminal is read to its end and kept in memory, so that the
// result can always be sought in.
// fails: Failure when it is not there, empty, a folder, or a stream that is too long or begins otherwise.
Descriptor openInput(const std::string& path, const InputKind& kind);

}  // namespace se_output
