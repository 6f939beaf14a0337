#include "kernel_check/timing/multiply_add_limit.h"

namespace timing {
namespace {

// More sums than any processor needs to hide the latency of its multiplications. Two a cycle with a latency of
// five cycles need ten, and a few more, because they are not issued in perfect order.
#define EACH_SUM(instructions) \
    ".irp n, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14\n\t" instructions "\n\t.endr\n\t"
#define REGISTERS                                                                                     \
    "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "xmm8", "xmm9", "xmm10", "xmm11", \
        "xmm12", "xmm13", "xmm14", "xmm15"

constexpr int kSums = 13;
constexpr int kRounds = 200;

// Written in assembler, so that only the assembler must support the instructions.
#define LOOP(name, instructions, end)                                                                      \
    void name() {                                                                                          \
        for (int i = 0; i < kRounds / 2; ++i) {                                                            \
            __asm__ volatile(".p2align 6\n\t" EACH_SUM(instructions) EACH_SUM(instructions)::: REGISTERS); \
        }                                                                                                  \
        __asm__ volatile(end ::: REGISTERS);                                                               \
    }

LOOP(madd128, "vpmaddwd %%xmm0, %%xmm1, %%xmm15; vpaddd %%xmm15, %%xmm\\n, %%xmm\\n", "vzeroupper")
LOOP(madd256, "vpmaddwd %%ymm0, %%ymm1, %%ymm15; vpaddd %%ymm15, %%ymm\\n, %%ymm\\n", "vzeroupper")
LOOP(madd512, "vpmaddwd %%zmm0, %%zmm1, %%zmm15; vpaddd %%zmm15, %%zmm\\n, %%zmm\\n", "vzeroupper")
LOOP(dot256, "%{vex%} vpdpwssd %%ymm0, %%ymm1, %%ymm\\n", "vzeroupper")
LOOP(dot512, "vpdpwssd %%zmm0, %%zmm1, %%zmm\\n", "vzeroupper")

MultiplyAddLimit row(const char* name, bool quill::CPUInfo::*needs, int bits, void (*loop)()) {
    return {name, needs, double{kRounds} * kSums * bits / 16, loop};
}

}  // namespace

const std::vector<MultiplyAddLimit>& multiplyAddLimits() {
    using Machine = quill::CPUInfo;
    static const std::vector<MultiplyAddLimit> all = {
        row("madd-128", &Machine::has_avx, 128, madd128),
        row("madd-256", &Machine::has_avx2, 256, madd256),
        row("dot-256", &Machine::has_avx_vnni, 256, dot256),
        row("madd-512", &Machine::has_avx512, 512, madd512),
        row("dot-512", &Machine::has_avx512_vnni, 512, dot512),
    };
    return all;
}

}  // namespace timing
