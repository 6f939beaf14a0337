// Eight single-precision numbers that are computed together: one a microphone and one more, or neighbouring bins of a
// spectrum. One register of a processor with AVX, two of any other.
#pragma once

#include <cstdint>

namespace reference_engine {

inline constexpr int kLanes = 8;

typedef float Lanes __attribute__((vector_size(32), may_alias, aligned(32)));

// Neighbouring bins of a real spectrum: one register with AVX-512.
inline constexpr int kGroup = 16;
typedef float Group __attribute__((vector_size(64), may_alias, aligned(64)));

// As the argument of a template, which would drop the alignment of a bare vector.
struct LaneSample {
    Lanes lanes;
};

// At any address of a float.
typedef float LooseLanes __attribute__((vector_size(32), may_alias, aligned(4)));

typedef int LaneInts __attribute__((vector_size(32), may_alias, aligned(32)));

// Samples and sums at any address of theirs.
typedef int16_t LooseSamples __attribute__((vector_size(16), may_alias, aligned(2)));
typedef int32_t LooseInts __attribute__((vector_size(32), may_alias, aligned(4)));

// One bin of eight spectra, in one line of the cache.
struct alignas(64) LaneBin {
    Lanes re;
    Lanes im;
};

}  // namespace reference_engine
