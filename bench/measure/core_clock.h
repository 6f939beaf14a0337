// The core's clock, measured: the time-stamp counter and the wall run at rates of their own.
// Threads: one.
#pragma once

namespace bench {

// Seconds on a clock that never goes back.
double now();

// Seconds that this thread has run, what the system gave to others left out. A slower question than now().
double threadNow();

// Seconds that one core cycle takes at this moment. Runs for about 20 microseconds.
double secondsPerCycle();

}  // namespace bench
