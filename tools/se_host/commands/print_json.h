// JSON on standard output.
// Threads: one.
#pragma once

#include <nlohmann/json.hpp>

namespace se_host {

// Indented. Bytes that are no UTF-8 (file names may hold any) are replaced, so that the result always parses.
void printJson(const nlohmann::ordered_json& json);

}  // namespace se_host
