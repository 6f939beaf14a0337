// The shares of a block's cycles as text and as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "tools/se_host/engine/cycle_split.h"

namespace se_host {

// A table; `own`, the shares with the engine's own routines, beside them when it is not null.
std::string toText(const CycleShares& shares, const CycleShares* own);

nlohmann::ordered_json toJson(const CycleShares& shares);

}  // namespace se_host
