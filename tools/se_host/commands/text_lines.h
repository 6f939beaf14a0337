// Pieces of the text that commands print for people.
#pragma once

#include <string>

namespace se_host {

// "  talker    -23.1 dBFS\n": a label in a column of its own, and what it says.
std::string labelledLine(const char* label, const std::string& text);

// "-23.1 dBFS", or "silence" for minus infinity.
std::string levelText(double dbfs);

}  // namespace se_host
