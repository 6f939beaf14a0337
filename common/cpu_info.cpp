#include "common/cpu_info.h"

#include <cpuid.h>

#include <cstdint>

namespace quill {
namespace {

struct Leaf {
    uint32_t eax = 0, ebx = 0, ecx = 0, edx = 0;
};

Leaf cpuid(uint32_t leaf, uint32_t subleaf) {
    Leaf r;
    if (!__get_cpuid_count(leaf, subleaf, &r.eax, &r.ebx, &r.ecx, &r.edx)) return {};
    return r;
}

constexpr bool bit(uint32_t word, int index) {
    return ((word >> index) & 1u) != 0;
}

// The register states that the operating system saves (XCR0).
uint32_t enabledStates() {
    uint32_t low = 0;
    uint32_t high = 0;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

}  // namespace

CPUInfo::CPUInfo() {
    const Leaf basic = cpuid(1, 0);
    has_ssse3 = bit(basic.ecx, 9);
    has_sse41 = bit(basic.ecx, 19);

    const bool os_saves_states = bit(basic.ecx, 27);
    if (!os_saves_states) return;
    constexpr uint32_t kYmm = 0x06;
    constexpr uint32_t kZmm = 0xe6;
    const uint32_t states = enabledStates();
    const bool ymm = (states & kYmm) == kYmm;
    const bool zmm = (states & kZmm) == kZmm;

    const Leaf extended = cpuid(7, 0);
    const Leaf extended1 = extended.eax >= 1 ? cpuid(7, 1) : Leaf{};
    has_avx = ymm && bit(basic.ecx, 28);
    has_avx2 = has_avx && bit(extended.ebx, 5);
    has_avx_vnni = has_avx2 && bit(extended1.eax, 4);
    has_avx512 = zmm && has_avx2 && bit(extended.ebx, 16) && bit(extended.ebx, 30) && bit(extended.ebx, 31);
    has_avx512_vnni = has_avx512 && bit(extended.ecx, 11);
}

}  // namespace quill
