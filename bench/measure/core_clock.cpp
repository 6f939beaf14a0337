#include "bench/measure/core_clock.h"

#include <time.h>

#include <chrono>
#include <cstdint>

namespace bench {
namespace {

// Every x86-64 core of today multiplies 64-bit integers in three cycles. Additions would not do: some cores
// take several dependent ones in one cycle.
constexpr int kCyclesPerMultiplication = 3;
constexpr int kMultiplications = 16 * 1500;

}  // namespace

double now() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(time).count();
}

double threadNow() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double secondsPerCycle() {
    uint64_t x = 3;
    const double begin = now();
    for (int i = 0; i < kMultiplications / 16; ++i) {
        __asm__ volatile(
            ".rept 16\n\t"
            "imul %0, %0\n\t"
            ".endr"
            : "+r"(x));
    }
    return (now() - begin) / (kMultiplications * kCyclesPerMultiplication);
}

}  // namespace bench
