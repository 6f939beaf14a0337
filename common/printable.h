// Text of others (an engine, a file, a caller) as it may go to a terminal or into a log.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "common/export.h"

namespace quill {

// Of a text in one line of a log: room for the longest path of the system (4096 bytes) and a sentence around it.
inline constexpr std::size_t kMostLogged = 8192;

// [any] The text as one line of valid UTF-8 that moves no cursor and hides nothing: "\n", "\t" and "\r" for
// these three; "\x1b" for every other control character and for each byte that is not UTF-8; "\u009b" for the
// C1 controls, the line separators and the direction marks of Unicode. Everything else, a backslash included,
// stays as it is. What would be longer than `most` bytes is cut there, and "... (1048576 bytes)" behind it says
// how long the text was.
QUILL_COMMON_EXPORT std::string printable(std::string_view text, std::size_t most = std::string_view::npos);

}  // namespace quill
