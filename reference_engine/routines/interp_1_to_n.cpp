// Polyphase interpolation: every input sample gives `factor` outputs, one for each phase of the coefficient
// table. The table holds `factor` phases of `num_taps` coefficients, phase after phase.
#include <cstddef>

#include "reference_engine/routines/fixed_point.h"
#include "reference_engine/routines/routines.h"

namespace reference_engine::plain {

void interp1ToN(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out, int16_t* coeffs,
                uint16_t num_taps) {
    for (size_t phase = 0; phase < factor; ++phase) {
        const int16_t* taps = coeffs + phase * num_taps;
        for (size_t i = 0; i < num_in; ++i) {
            out[i * factor + phase] = roundQ15(correlate(taps, *signal + i, num_taps));
        }
    }
    *signal += num_in;
}

}  // namespace reference_engine::plain
