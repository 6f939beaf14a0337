// Products of complex Q15 values, interleaved real and imaginary part.
#include "reference_engine/routines/fixed_point.h"
#include "reference_engine/routines/routines.h"

namespace reference_engine::plain {
namespace {

// Negation in 16 bits: -32768 has no positive counterpart and stays -32768.
int16_t negated16(int16_t value) {
    return static_cast<int16_t>(0u - static_cast<uint16_t>(value));
}

}  // namespace

void vcmul_i16(int16_t* a, int16_t* b, int16_t* out, uint16_t n) {
    const int in_fours = n / 4 * 4;
    for (int k = 0; k < n; ++k) {
        const int16_t ar = a[2 * k], ai = a[2 * k + 1];
        const int16_t br = b[2 * k], bi = b[2 * k + 1];
        // Kept on purpose: groups of four negate ai in 16 bits, the values left over subtract in 32. They
        // differ at ai = -32768.
        const uint32_t minus_ai_bi = k < in_fours ? product(negated16(ai), bi) : 0u - product(ai, bi);
        out[2 * k] = roundQ15(product(ar, br) + minus_ai_bi);
        out[2 * k + 1] = roundQ15(product(ar, bi) + product(ai, br));
    }
}

}  // namespace reference_engine::plain
