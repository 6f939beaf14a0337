// The check of an engine build as text and as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "host/engine/engine_check.h"

namespace se_host {

// A few lines, the last one ended.
std::string toText(const EngineCheck& check);
nlohmann::ordered_json toJson(const EngineCheck& check);

}  // namespace se_host
