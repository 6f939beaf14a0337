// Plain loops, vectorised by the compiler. Compiled for the floor processor and, by plain_native.cpp, for the
// processor of the build machine. The including file defines PLAIN, the namespace. No templates of the standard
// library and nothing else that the linker could share between the two.
#include <cstddef>
#include <cstdint>

namespace routines_vs_libraries {
namespace PLAIN {

inline int16_t rounded(int32_t sum) {
    const int32_t value = static_cast<int32_t>(static_cast<uint32_t>(sum) + 16384u) >> 15;
    return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
}

void correlate(const int16_t* coeffs, const int16_t* signal, int16_t* out, ptrdiff_t num_out,
               ptrdiff_t num_taps) {
    for (ptrdiff_t i = 0; i < num_out; ++i) {
        int32_t sum = 0;
        for (ptrdiff_t k = 0; k < num_taps; ++k) sum += coeffs[k] * signal[i + k];
        out[i] = rounded(sum);
    }
}

void multiply(const int16_t* a, const int16_t* b, int16_t* out, ptrdiff_t n) {
    for (ptrdiff_t k = 0; k < n; ++k) {
        const int ar = a[2 * k], ai = a[2 * k + 1], br = b[2 * k], bi = b[2 * k + 1];
        out[2 * k] = rounded(ar * br - ai * bi);
        out[2 * k + 1] = rounded(ar * bi + ai * br);
    }
}

void interpolate(const int16_t* signal, const int16_t* coeffs, int16_t* out, ptrdiff_t num_in,
                 ptrdiff_t factor, ptrdiff_t num_taps) {
    for (ptrdiff_t j = 0; j < num_in; ++j) {
        for (ptrdiff_t p = 0; p < factor; ++p) {
            int32_t sum = 0;
            for (ptrdiff_t t = 0; t < num_taps; ++t) sum += coeffs[p * num_taps + t] * signal[j + t];
            out[j * factor + p] = rounded(sum);
        }
    }
}

}  // namespace PLAIN
}  // namespace routines_vs_libraries
