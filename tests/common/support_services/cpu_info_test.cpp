#include "common/cpu_info.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

TEST(CpuInfo, AgreesWithTheCompilersOwnDetection) {
    const CPUInfo cpu;
    EXPECT_EQ(cpu.has_ssse3, __builtin_cpu_supports("ssse3") != 0);
    EXPECT_EQ(cpu.has_sse41, __builtin_cpu_supports("sse4.1") != 0);
    EXPECT_EQ(cpu.has_avx, __builtin_cpu_supports("avx") != 0);
    EXPECT_EQ(cpu.has_avx2, __builtin_cpu_supports("avx2") != 0);
    EXPECT_EQ(cpu.has_avx512, __builtin_cpu_supports("avx512f") != 0 &&
                                  __builtin_cpu_supports("avx512bw") != 0 &&
                                  __builtin_cpu_supports("avx512vl") != 0);
    EXPECT_EQ(cpu.has_avx512_vnni, cpu.has_avx512 && __builtin_cpu_supports("avx512vnni") != 0);
}

TEST(CpuInfo, MayBeConstructedAgain) {
    const CPUInfo first;
    const CPUInfo second;
    EXPECT_EQ(first.has_avx, second.has_avx);
    EXPECT_EQ(first.has_avx2, second.has_avx2);
    EXPECT_EQ(first.has_avx512_vnni, second.has_avx512_vnni);
}

TEST(CpuInfo, WiderSetsImplyTheNarrowerOnes) {
    const CPUInfo cpu;
    EXPECT_LE(cpu.has_avx2, cpu.has_avx);
    EXPECT_LE(cpu.has_avx_vnni, cpu.has_avx2);
    EXPECT_LE(cpu.has_avx512, cpu.has_avx2);
    EXPECT_LE(cpu.has_avx512_vnni, cpu.has_avx512);
}

}  // namespace
}  // namespace quill
