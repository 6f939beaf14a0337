// Eight single-precision numbers that are computed together: one a microphone and one more, or neighbouring bins of a
// spectrum. One register of a processor with AVX, two of any other.
#pragma once

namespace reference_engine {

inline constexpr int kLanes = 8;

typedef float Lanes __attribute__((vector_size(32), may_alias, aligned(32)));

typedef int LaneInts __attribute__((vector_size(32), may_alias, aligned(32)));

// One bin of eight spectra, in one line of the cache.
struct alignas(64) LaneBin {
    Lanes re;
    Lanes im;
};

}  // namespace reference_engine
