// Messages of one line, also with file names or engine texts that contain line breaks.
#pragma once

#include <string>

namespace se_output {

// `text` with control characters as blanks and no blanks at its ends.
std::string oneLine(std::string text);

}  // namespace se_output
