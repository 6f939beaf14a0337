// Loops without intrinsics, compiled twice: for the floor processor, as the rest of this project, and for the
// processor of the build machine.
// needs: sums that fit in 32 bits.
#pragma once

#include <cstddef>
#include <cstdint>

namespace routines_vs_libraries {

struct PlainLoops {
    const char* name;
    void (*correlate)(const int16_t* coeffs, const int16_t* signal, int16_t* out, ptrdiff_t num_out,
                      ptrdiff_t num_taps);
    // Complex values in Q15.
    void (*multiply)(const int16_t* a, const int16_t* b, int16_t* out, ptrdiff_t n);
    void (*interpolate)(const int16_t* signal, const int16_t* coeffs, int16_t* out, ptrdiff_t num_in,
                        ptrdiff_t factor, ptrdiff_t num_taps);
};

extern const PlainLoops kPlainFloor, kPlainNative;

}  // namespace routines_vs_libraries
