// Real FIR filter with optional decimation, as a correlation: out[i] is the sum over k of coeffs[k] times
// signal[i * step + k], order + 1 taps.
#include <cstddef>

#include "reference_engine/routines/fixed_point.h"
#include "reference_engine/routines/routines.h"

namespace reference_engine::plain {
namespace {

int64_t wideSum(const int16_t* coeffs, const int16_t* signal, int taps) {
    int64_t sum = 0;
    for (int k = 0; k < taps; ++k) sum += int32_t{coeffs[k]} * signal[k];
    return sum;
}

}  // namespace

void computeRFir(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order, uint16_t num_out,
                 uint16_t step) {
    const int taps = order + 1;
    // Kept on purpose: blocks of eight outputs without decimation sum in 32 bits and wrap, all others in 64.
    const bool in_eights = num_out % 8 == 0 && step == 1;
    for (size_t i = 0; i < num_out; ++i) {
        const int16_t* span = signal + i * step;
        out[i] = in_eights ? roundQ15(correlate(coeffs, span, taps))
                           : saturate16((wideSum(coeffs, span, taps) + 16384) >> 15);
    }
}

}  // namespace reference_engine::plain
