// One pass of a mixed-radix real FFT: its sizes, the two orders of rows that it connects, and where complex
// values stand in a row. No thread rules.
//
// A stage splits n = radix * groups * width. A row is `width` floats: one real value, then complex pairs, and
// for an even width a last real value. The data stand either
//   split:  row (k, j) at width (k + groups j), as the stages behind in the list of factors see them, or
//   packed: row (j, k) at width (j + radix k), which the next stage sees as one row of width radix * width.
#pragma once

#include <cstddef>

#include "tests/kernel_check/scalar_fft/complex_pair.h"

namespace quill::test::scalar_fft {

struct Stage {
    std::size_t radix;
    std::size_t groups;     // product of the factors before this one
    std::size_t width;      // product of the factors behind it
    const float* twiddles;  // radix - 1 rows

    template <class Float>
    Float* split(Float* data, std::size_t k, std::size_t j) const {
        return data + width * (k + groups * j);
    }
    template <class Float>
    Float* packed(Float* data, std::size_t j, std::size_t k) const {
        return data + width * (j + radix * k);
    }
    // Factor of pair m of split row j, j and m from 1 on.
    Complex twiddle(std::size_t j, std::size_t m) const {
        const float* const w = twiddles + width * (j - 1) + 2 * m - 2;
        return {w[0], w[1]};
    }
    // Pairs m = 1 .. pairs() stand in a row.
    std::size_t pairs() const { return (width - 1) / 2; }
    bool evenWidth() const { return width % 2 == 0; }
    std::size_t last() const { return width - 1; }

    // Pair m counted from the end: in packed order, an odd row is the reversed half of the row before it.
    Complex mirrored(const float* row, std::size_t m) const {
        return {row[width - 2 * m - 1], row[width - 2 * m]};
    }
    void putMirrored(float* row, std::size_t m, Complex value) const {
        row[width - 2 * m - 1] = value.re;
        row[width - 2 * m] = value.im;
    }
};

inline Complex pair(const float* row, std::size_t m) {
    return {row[2 * m - 1], row[2 * m]};
}
inline void putPair(float* row, std::size_t m, Complex value) {
    row[2 * m - 1] = value.re;
    row[2 * m] = value.im;
}

}  // namespace quill::test::scalar_fft
