// Where a diagnostic stands: its folder, one for each level.
// Private to this folder.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

inline constexpr std::array<const char*, 4> kDiagFolders{"diags/basic", "diags/intermediate",
                                                         "diags/advanced", "diags/debug"};

// The folder of a diagnostic, as an index. A level below 0 counts as the first, one above 3 as the last.
inline size_t diagFolder(int index) {
    constexpr int32_t kLast = kDiagFolders.size() - 1;
    return static_cast<size_t>(std::clamp(SEDiagGetLevel(index), 0, kLast));
}

}  // namespace quill::media::se_wrapper
