#include "host/output/one_line.h"

#include <algorithm>

#include "common/printable.h"

namespace se_output {

std::string oneLine(std::string text) {
    const auto isSpace = [](char c) { return c >= '\t' && c <= '\r'; };
    std::replace_if(text.begin(), text.end(), isSpace, ' ');
    const size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) return {};
    return quill::printable(std::string_view(text).substr(begin, text.find_last_not_of(' ') - begin + 1));
}

}  // namespace se_output
