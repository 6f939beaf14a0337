#include "common/cpu_info.h"

#include <gtest/gtest.h>

#include <string>

#include "common/cpu_leaves.h"

namespace quill {
namespace {

std::string features(const CpuLeaves& leaves) {
    CPUInfo cpu;
    readFeatures(leaves, &cpu);
    std::string names;
    if (cpu.has_ssse3) names += " ssse3";
    if (cpu.has_sse41) names += " sse41";
    if (cpu.has_avx) names += " avx";
    if (cpu.has_avx2) names += " avx2";
    if (cpu.has_avx_vnni) names += " avx_vnni";
    if (cpu.has_avx512) names += " avx512";
    if (cpu.has_avx512_vnni) names += " avx512_vnni";
    return names;
}

CpuLeaves everything() {
    constexpr CpuLeaf kAll = {~0u, ~0u, ~0u, ~0u};
    return {kAll, kAll, kAll, ~0u};
}

// What is left of a processor with every feature when one bit is taken away.
std::string featuresWithout(CpuLeaf CpuLeaves::*leaf, uint32_t CpuLeaf::*word, int bit) {
    CpuLeaves leaves = everything();
    leaves.*leaf.*word &= ~(1u << bit);
    return features(leaves);
}

std::string featuresWithoutState(int bit) {
    CpuLeaves leaves = everything();
    leaves.enabled_states &= ~(1u << bit);
    return features(leaves);
}

// Every machine can tell these: a machine that has the features is not needed.
TEST(CpuFeatures, AreThoseWhoseBitsAreSet) {
    EXPECT_EQ(features({}), "");
    EXPECT_EQ(features(everything()), " ssse3 sse41 avx avx2 avx_vnni avx512 avx512_vnni");
    EXPECT_EQ(featuresWithout(&CpuLeaves::basic, &CpuLeaf::ecx, 9),
              " sse41 avx avx2 avx_vnni avx512 avx512_vnni");
    EXPECT_EQ(featuresWithout(&CpuLeaves::basic, &CpuLeaf::ecx, 19),
              " ssse3 avx avx2 avx_vnni avx512 avx512_vnni");
    EXPECT_EQ(featuresWithout(&CpuLeaves::extended1, &CpuLeaf::eax, 4),
              " ssse3 sse41 avx avx2 avx512 avx512_vnni");
    EXPECT_EQ(featuresWithout(&CpuLeaves::extended, &CpuLeaf::ecx, 11),
              " ssse3 sse41 avx avx2 avx_vnni avx512");
}

TEST(CpuFeatures, CountOnlyTogetherWithTheNarrowerOnes) {
    EXPECT_EQ(featuresWithout(&CpuLeaves::basic, &CpuLeaf::ecx, 28), " ssse3 sse41");
    EXPECT_EQ(featuresWithout(&CpuLeaves::extended, &CpuLeaf::ebx, 5), " ssse3 sse41 avx");
    for (const int foundation_bytes_lengths : {16, 30, 31})
        EXPECT_EQ(featuresWithout(&CpuLeaves::extended, &CpuLeaf::ebx, foundation_bytes_lengths),
                  " ssse3 sse41 avx avx2 avx_vnni");
}

TEST(CpuFeatures, CountOnlyIfTheSystemSavesTheirRegisters) {
    for (const int sse_or_avx : {1, 2}) EXPECT_EQ(featuresWithoutState(sse_or_avx), " ssse3 sse41");
    for (const int mask_or_wide : {5, 6, 7})
        EXPECT_EQ(featuresWithoutState(mask_or_wide), " ssse3 sse41 avx avx2 avx_vnni");
}

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
