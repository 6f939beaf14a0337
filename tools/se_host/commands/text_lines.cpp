#include "tools/se_host/commands/text_lines.h"

#include <cmath>

#include "common/string_printf.h"

namespace se_host {

using quill::stringPrintf;

std::string labelledLine(const char* label, const std::string& text) {
    return stringPrintf("  %-10s", label) + text + "\n";
}

std::string levelText(double dbfs) {
    return std::isinf(dbfs) ? std::string("silence") : stringPrintf("%.1f dBFS", dbfs);
}

}  // namespace se_host
