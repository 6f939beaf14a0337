// Correlation with 32-bit results for the echo estimate. Works in whole blocks of eight outputs and whole
// steps of eight taps, at least one of each, for any length.
#include "reference_engine/routines/fixed_point.h"
#include "reference_engine/routines/routines.h"

namespace reference_engine::plain {
namespace {

int inEights(int32_t length) {
    return std::max(8, (length + 7) / 8 * 8);
}

}  // namespace

// needs: shifts 0 to 31.
void aecConvolution(int16_t* coeffs, int16_t* signal, int32_t* out, int32_t shift_right, int32_t num_out,
                    int32_t num_taps, int32_t shift_left) {
    const uint32_t half = shift_right == 0 ? 0 : 1u << (shift_right - 1);
    const int taps = inEights(num_taps);
    for (int i = 0; i < inEights(num_out); ++i) {
        const int32_t rounded = static_cast<int32_t>(correlate(coeffs, signal + i, taps) + half);
        out[i] = static_cast<int32_t>(static_cast<uint32_t>(rounded >> shift_right) << shift_left);
    }
}

}  // namespace reference_engine::plain
