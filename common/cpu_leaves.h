// What a processor and its operating system say about the features that CPUInfo knows, and how it is read.
#pragma once

#include <cstdint>

#include "common/cpu_info.h"

namespace quill {

struct CpuLeaf {
    uint32_t eax = 0, ebx = 0, ecx = 0, edx = 0;
};

// Zero where the processor has no such leaf.
struct CpuLeaves {
    CpuLeaf basic;                // leaf 1
    CpuLeaf extended;             // leaf 7, subleaf 0
    CpuLeaf extended1;            // leaf 7, subleaf 1
    uint32_t enabled_states = 0;  // low half of XCR0: the registers that the operating system saves
};

// [any] Sets every field. The bits are those of the processors' manuals (Intel SDM volume 2A, CPUID; volume 1, 13.3).
inline void readFeatures(const CpuLeaves& leaves, CPUInfo* cpu) {
    const auto bit = [](uint32_t word, int index) { return ((word >> index) & 1u) != 0; };
    constexpr uint32_t kYmm = 0x06;
    constexpr uint32_t kZmm = 0xe6;
    const bool ymm = (leaves.enabled_states & kYmm) == kYmm;
    const bool zmm = (leaves.enabled_states & kZmm) == kZmm;

    const CpuLeaf& basic = leaves.basic;
    const CpuLeaf& extended = leaves.extended;
    cpu->has_ssse3 = bit(basic.ecx, 9);
    cpu->has_sse41 = bit(basic.ecx, 19);
    cpu->has_avx = ymm && bit(basic.ecx, 28);
    cpu->has_avx2 = cpu->has_avx && bit(extended.ebx, 5);
    cpu->has_avx_vnni = cpu->has_avx2 && bit(leaves.extended1.eax, 4);
    cpu->has_avx512 =
        zmm && cpu->has_avx2 && bit(extended.ebx, 16) && bit(extended.ebx, 30) && bit(extended.ebx, 31);
    cpu->has_avx512_vnni = cpu->has_avx512 && bit(extended.ecx, 11);
}

}  // namespace quill
