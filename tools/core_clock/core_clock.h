// Measures the core's clock. The time-stamp counter and the wall clock have other rates.
#pragma once

#include <cstdint>

namespace core_clock {

// Seconds on a clock that never goes back.
double now();

// Seconds that this thread has run, without the time of other threads. Takes longer than now().
double threadNow();

// The time-stamp counter, the fastest clock to read.
uint64_t ticks();

// Seconds that one core cycle takes at this moment. Runs for about 20 microseconds.
double secondsPerCycle();

// Core cycles in one tick at this moment. Runs for about 20 microseconds.
double cyclesPerTick();

}  // namespace core_clock
