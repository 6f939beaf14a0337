// The body of the complex multiplication, included by one source file an instruction set. See dsp_lanes.inl.h.
#pragma once

#include "webrtc_common/se_wrapper/dsp/dsp_lanes.inl.h"

namespace {

// Rounded Q15 values of sums of Q30 products, still 32 bits wide.
template <class Lanes>
DSP_INLINE typename Lanes::Vector roundedQ15(typename Lanes::Vector sums) {
    return Lanes::template shiftRight32<15>(Lanes::add32(sums, Lanes::all32(1 << 14)));
}

// Four values of each half, narrowed before they are interleaved: a shuffle fewer than the other way round.
template <class Lanes>
DSP_INLINE void multiplyGroup(const int16_t* a, const int16_t* b, int16_t* out) {
    const auto conjugate = Lanes::eachHalf(_mm_setr_epi16(1, -1, 1, -1, 1, -1, 1, -1));
    auto swap = Lanes::eachHalf(_mm_setr_epi8(2, 3, 0, 1, 6, 7, 4, 5, 10, 11, 8, 9, 14, 15, 12, 13));
    const auto interleave =
        Lanes::eachHalf(_mm_setr_epi8(0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15));
    __asm__("" : "+x"(swap));  // else clang splits it into two shuffles
    const auto x = Lanes::load(a);
    const auto y = Lanes::load(b);
    const auto re = roundedQ15<Lanes>(Lanes::multiplyAddPairs(Lanes::withSign(x, conjugate), y));
    const auto im = roundedQ15<Lanes>(Lanes::multiplyAddPairs(x, Lanes::shuffle(y, swap)));
    Lanes::store(out, Lanes::shuffle(Lanes::saturate(re, im), interleave));
}

DSP_INLINE int16_t roundedAndSaturated(uint32_t sum) {
    const int32_t value = static_cast<int32_t>(sum + (1u << 14)) >> 15;
    return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
}

DSP_INLINE void multiplyOne(const int16_t* a, const int16_t* b, int16_t* out) {
    const auto product = [](int32_t x, int32_t y) { return static_cast<uint32_t>(x * y); };
    const int16_t re = roundedAndSaturated(product(a[0], b[0]) - product(a[1], b[1]));
    const int16_t im = roundedAndSaturated(product(a[0], b[1]) + product(a[1], b[0]));
    out[0] = re;
    out[1] = im;
}

DSP_INLINE void multiplyComplex(const int16_t* a, const int16_t* b, int16_t* out, size_t n) {
    const size_t parts = 2 * n;
    size_t i = 0;
    for (; i + Widest::kSamples <= parts; i += Widest::kSamples) multiplyGroup<Widest>(a + i, b + i, out + i);
    for (; i + Eight::kSamples <= parts; i += Eight::kSamples) multiplyGroup<Eight>(a + i, b + i, out + i);
    for (; i < parts; i += 2) multiplyOne(a + i, b + i, out + i);
}

}  // namespace
