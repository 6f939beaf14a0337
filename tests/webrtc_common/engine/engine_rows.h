// Rows of the interface table as test parameters.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper::test {

// The numbers of all rows of these kinds.
inline std::vector<std::size_t> rowsOf(std::initializer_list<EngineRowKind> kinds) {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < kNumEngineRows; ++row) {
        for (const EngineRowKind kind : kinds) {
            if (kEngineRows[row].kind == kind) rows.push_back(row);
        }
    }
    return rows;
}

// The numbers of the rows that every engine has to have.
inline std::vector<std::size_t> requiredRows() {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < kNumEngineRows; ++row) {
        if (isRequired(kEngineRows[row].kind)) rows.push_back(row);
    }
    return rows;
}

// What the slot of a row holds at present.
inline void* slotValue(std::size_t row) {
    void* const values[] = {
#define ENGINE_ROW(kind, variable, type, ...) reinterpret_cast<void*>(variable),
#include "webrtc_common/se_wrapper/table/engine_table_rows.h"
    };
    return values[row];
}

inline std::string rowName(const testing::TestParamInfo<std::size_t>& parameter) {
    return kEngineRows[parameter.param].variable;
}

}  // namespace quill::media::se_wrapper::test
