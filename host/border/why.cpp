#include "host/border/why.h"

#include <algorithm>
#include <cstring>

#include "host/output/one_line.h"

namespace se_host {

void copyText(const std::string& text, char* to, size_t size) {
    if (to == nullptr || size == 0) return;
    const size_t length = std::min(text.size(), size - 1);
    std::memcpy(to, text.data(), length);
    to[length] = '\0';
}

se_host_status_t Why::operator()(se_host_status_t status, const std::string& text) const {
    copyText(se_output::oneLine(text), text_, size_);
    return status;
}

}  // namespace se_host
