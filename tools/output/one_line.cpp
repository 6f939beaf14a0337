#include "tools/output/one_line.h"

#include <algorithm>

namespace se_output {

std::string oneLine(std::string text) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    const size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

}  // namespace se_output
