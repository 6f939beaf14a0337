// The time of calls in core cycles: rounds of repetitions, each between two measurements of the core's clock.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace timing {

// Makes the same call a number of times.
using Repeated = std::function<void(size_t times)>;

// Prevents the compiler from removing a call.
template <class Call>
Repeated repeated(Call call) {
    return [call](size_t times) mutable {
        for (size_t i = 0; i < times; ++i) {
            call();
            __asm__ volatile("" ::: "memory");
        }
    };
}

struct Rounds {
    int most = 201;
    double seconds = 60e-6;  // of one, so short that the clock seldom changes within it
    double together = 4.0;   // seconds for the rounds of all calls; long calls get fewer rounds, down to
    int fewest = 11;         // as many
};

// Of one call: the upper limit of the fastest tenth of its rounds. Other load on the core only adds.
struct Timing {
    double cycles = 0;
    double nanoseconds = 0;
};

// Times the calls in turn, round after round, so that a disturbance affects all of them.
std::vector<Timing> timeInTurn(const std::vector<Repeated>& calls, const Rounds& rounds = {});

}  // namespace timing
