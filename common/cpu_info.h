// Features of the processor. A feature counts only if the operating system saves the registers that it uses.
#pragma once

#include "common/export.h"

namespace quill {

// [any] Read from the processor at construction. Any number of objects may be constructed.
struct QUILL_COMMON_EXPORT CPUInfo {
    CPUInfo();

    bool has_ssse3 = false;
    bool has_sse41 = false;
    bool has_avx = false;
    bool has_avx2 = false;
    bool has_avx_vnni = false;
    bool has_avx512 = false;       // F, BW and VL together
    bool has_avx512_vnni = false;  // has_avx512 and VNNI
};

}  // namespace quill
