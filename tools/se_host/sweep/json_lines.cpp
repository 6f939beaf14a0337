#include "tools/se_host/sweep/json_lines.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include "host/diags/json_reader.h"
#include "host/output/descriptor.h"
#include "host/output/errors.h"
#include "host/output/input_file.h"

namespace se_host::sweep {

std::string textOf(const std::string& path) {
    const se_output::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) se_output::cannotRead(path, std::strerror(errno));
    try {
        return se_output::contentOf(file.number());
    } catch (const std::system_error& error) {
        se_output::cannotRead(path, error.code().message());
    }
}

void visitLines(const std::string& path, std::string_view text,
                const std::function<void(std::string_view line)>& visit) {
    for (size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos) continue;
        try {
            visit(line);
        } catch (const se_output::Failure& failure) {
            throw se_output::Failure(path + ":" + std::to_string(number) + ": " + failure.what());
        }
    }
}

size_t lengthOfWholeLines(std::string_view text) {
    const size_t last = text.rfind('\n');
    return last == std::string_view::npos ? 0 : last + 1;
}

Json objectIn(std::string_view line) {
    try {
        Json json = readJson(line);
        if (!json.is_object()) throw std::runtime_error("it is no object");
        return json;
    } catch (const std::runtime_error& error) {
        throw se_output::Failure(std::string("this is not a line of JSON: ") + error.what());
    }
}

std::string lineOf(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace se_host::sweep
