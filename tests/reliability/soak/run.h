// Hours of sound through an engine behind the wrapper, as fast as it goes, with edits and passes in between.
#pragma once

#include <cstdint>
#include <string>

namespace reliability {

struct SoakResult {
    uint64_t blocks;
    uint64_t rounds;  // of edits and passes
    uint64_t checksum;
    uint64_t first_kib, last_kib,
        most_kib;  // resident: after the first rounds, at the end, at most in between
    double seconds;
    double ticks_per_second;                          // of the clock of the following
    uint64_t median, share_999, share_9999, longest;  // of a block that the system did not interrupt
    uint64_t interrupted, longest_interrupted;  // how many blocks were interrupted, and the longest of them
};

// needs: a process that has loaded no engine.
SoakResult soak(const std::string& engine, uint64_t blocks);

}  // namespace reliability
