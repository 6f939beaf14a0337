// Messages of one line, also with file names or engine texts of any bytes.
#pragma once

#include <string>

namespace se_output {

// `text` with line breaks and tabs as blanks, no blanks at its ends, and the rest as quill::printable() shows it.
std::string oneLine(std::string text);

}  // namespace se_output
