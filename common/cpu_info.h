// Features of the processor, the operating system's support for their registers included.
// Threads: any.
#pragma once

#include "common/export.h"

namespace quill {

// [any] Asked once, at construction; constructing again is harmless.
struct QUILL_COMMON_EXPORT CPUInfo {
    CPUInfo();

    bool has_ssse3 = false;
    bool has_sse41 = false;
    bool has_avx = false;
    bool has_avx2 = false;
    bool has_avx_vnni = false;
    bool has_avx512 = false;       // F, BW and VL together
    bool has_avx512_vnni = false;  // VNNI on top of those
};

}  // namespace quill
