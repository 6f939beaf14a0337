#include "tools/se_host/commands/print_json.h"

namespace se_host {

void printJson(const nlohmann::ordered_json& json, std::ostream& out) {
    out << json.dump(2, ' ', true, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

}  // namespace se_host
