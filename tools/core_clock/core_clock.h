// The core's clock, measured: the time-stamp counter and the wall run at rates of their own.
#pragma once

#include <cstdint>

namespace core_clock {

// Seconds on a clock that never goes back.
double now();

// Seconds that this thread has run, what the system gave to others left out. Takes longer than now().
double threadNow();

// The time-stamp counter: the clock that takes least to read.
uint64_t ticks();

// Seconds that one core cycle takes at this moment. Runs for about 20 microseconds.
double secondsPerCycle();

// Core cycles that go by in one tick at this moment. Runs for about 20 microseconds.
double cyclesPerTick();

}  // namespace core_clock
