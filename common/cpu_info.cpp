#include "common/cpu_info.h"

#include <cpuid.h>

#include <cstdint>

#include "common/cpu_leaves.h"

namespace quill {
namespace {

CpuLeaf cpuid(uint32_t leaf, uint32_t subleaf) {
    CpuLeaf r;
    if (!__get_cpuid_count(leaf, subleaf, &r.eax, &r.ebx, &r.ecx, &r.edx)) return {};
    return r;
}

uint32_t enabledStates() {
    uint32_t low = 0;
    uint32_t high = 0;
    __asm__("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

CpuLeaves leavesOfThisProcessor() {
    CpuLeaves leaves;
    leaves.basic = cpuid(1, 0);
    leaves.extended = cpuid(7, 0);
    if (leaves.extended.eax >= 1) leaves.extended1 = cpuid(7, 1);
    // Without this bit the instruction that reads the states does not exist.
    constexpr uint32_t kOsSavesStates = uint32_t{1} << 27;
    if ((leaves.basic.ecx & kOsSavesStates) != 0) leaves.enabled_states = enabledStates();
    return leaves;
}

}  // namespace

CPUInfo::CPUInfo() {
    readFeatures(leavesOfThisProcessor(), this);
}

}  // namespace quill
