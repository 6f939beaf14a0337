#include "tools/core_clock/core_clock.h"

#include <time.h>
#include <x86intrin.h>

#include <chrono>

namespace core_clock {
namespace {

// Every current x86-64 core multiplies 64-bit integers in three cycles. Additions are not suitable: some cores
// execute several dependent ones in one cycle.
constexpr int kCyclesPerMultiplication = 3;
constexpr int kMultiplications = 16 * 1500;
constexpr int kCycles = kMultiplications * kCyclesPerMultiplication;

// Takes kCycles core cycles.
void multiplyInAChain() {
    uint64_t x = 3;
    for (int i = 0; i < kMultiplications / 16; ++i) {
        __asm__ volatile(
            ".rept 16\n\t"
            "imul %0, %0\n\t"
            ".endr"
            : "+r"(x));
    }
}

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

uint64_t ticks() {
    return __rdtsc();
}

double secondsPerCycle() {
    const double begin = now();
    multiplyInAChain();
    return (now() - begin) / kCycles;
}

double cyclesPerTick() {
    const uint64_t begin = ticks();
    multiplyInAChain();
    return kCycles / static_cast<double>(ticks() - begin);
}

}  // namespace core_clock
