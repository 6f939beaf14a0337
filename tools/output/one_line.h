// Messages are one line each, also when a file name or an engine puts line breaks into them.
#pragma once

#include <string>

namespace se_output {

// `text` with control characters as blanks and no blanks at its ends.
std::string oneLine(std::string text);

}  // namespace se_output
