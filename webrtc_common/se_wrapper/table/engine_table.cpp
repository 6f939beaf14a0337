#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

#define ENGINE_ROW(kind, variable, type, ...) EngineSlot<type> variable = nullptr;
#include "webrtc_common/se_wrapper/table/engine_table_rows.h"

bool g_has_beam_forming = false;
bool g_has_noise_tests = false;

bool isEngineRowPresent(std::size_t row) {
    const bool present[] = {
#define ENGINE_ROW(kind, variable, type, ...) variable != nullptr,
#include "webrtc_common/se_wrapper/table/engine_table_rows.h"
    };
    return present[row];
}

int countPresentEngineRows(EngineRowKind kind) {
    int count = 0;
    for (std::size_t row = 0; row < kNumEngineRows; ++row) {
        if (kEngineRows[row].kind == kind && isEngineRowPresent(row)) ++count;
    }
    return count;
}

}  // namespace quill::media::se_wrapper
