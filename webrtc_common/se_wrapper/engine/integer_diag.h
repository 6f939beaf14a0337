// Setting an integer diagnostic by name.
// Threads: [setup] and [control].
#pragma once

#include <string>

namespace quill::media::se_wrapper {

// Sets the diagnostic to `value`, cut to the low bits that its type holds: 70000 reaches a 16-bit diagnostic
// as 4464. needs: a loaded engine.
// fails: a level-2 record, and nothing set, when the engine does not know the name or the type is none of the
// four integer types of 16 and 32 bits.
void setIntegerDiag(const std::string& name, int value);

}  // namespace quill::media::se_wrapper
