// One pass of a mixed-radix real FFT: its sizes and the places of its values.
//
// A pass splits n = radix * groups * width. A row is `width` values: one real value, then complex pairs, and
// for an even width a last real value; pair m is values 2 m - 1 and 2 m. On one side of a pass stand the split
// rows (k, j), as the factors behind it in the list see them, on the other the packed rows (j, k), `radix` of
// which are one row of the factors before it.
//
// Between passes the same value of all rows stands together, so that neighbours take part in independent
// butterflies with the same twiddle factors:
//   split:  value i of row (k, j) at groups (radix i + j) + k,
//   packed: value i of row (j, k) at groups (width j + i) + k.
// With rows of one value before the first pass and one row after the last, this is the caller's own order.
#pragma once

#include <stddef.h>

namespace quill::fftpack {

struct Stage {
    size_t radix;
    size_t groups;          // product of the factors before this one
    size_t width;           // product of the factors after it
    const float* twiddles;  // radix - 1 rows of width: pairs from their start on
};

}  // namespace quill::fftpack
