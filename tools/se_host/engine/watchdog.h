// Notices a call of the engine that does not return.
// Threads: one.
#pragma once

#include <cstdint>

namespace se_host {

class Watchdog {
  public:
    static constexpr int kWarnAfter = 5;  // seconds

    enum class Verdict { kGoesOn, kWarn, kEnd };

    // in: seconds in one call after which it is to end; 0: it never is.
    explicit Watchdog(int timeout) : timeout_(timeout) {}

    // Call once a second. Seconds are counted by these calls, so that a stopped process is not taken for one that hangs.
    Verdict tick();

    // Seconds in the present call.
    int seconds() const { return seconds_; }

  private:
    int timeout_;
    int seconds_ = 0;
    uint64_t changes_ = 0;
};

}  // namespace se_host
