// A row of the results: what one task came to. It holds no times.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/measures/measures.h"
#include "tools/se_host/sweep/order.h"

namespace se_host::sweep {

Json doneRow(const Order& order, const Measured& measured, const std::vector<int16_t>& output);

// `error`: one line.
Json failedRow(const Order& order, const std::string& error);

inline bool hasFailed(const Json& row) {
    return row.value("status", "") != "ok";
}

}  // namespace se_host::sweep
