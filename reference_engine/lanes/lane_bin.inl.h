// Arithmetic on one bin of eight spectra, for the inner loops, in vectors that have the size of a register: one for both real
// and imaginary parts with AVX-512, one each with AVX, two each otherwise. Each number is computed by the same operations
// in all three. Included by one file for each instruction set.
#pragma once

#include <immintrin.h>

#include "reference_engine/lanes/lanes.h"

namespace reference_engine {
namespace {

#ifdef __AVX512F__

constexpr int kTogether = 4;  // bins for which the registers suffice

typedef float Bin __attribute__((vector_size(64), may_alias));
typedef int BinInts __attribute__((vector_size(64)));

Bin load(const LaneBin& from) {
    return *reinterpret_cast<const Bin*>(&from);
}

void store(Bin value, LaneBin* to) {
    *reinterpret_cast<Bin*>(to) = value;
}

Bin zero() {
    return Bin{};
}

// The same factors for both parts: one for the last lane, one for all others.
Bin factors(const float& others, const float& last) {
    constexpr __mmask16 kLastLanes = 0x8080;
    return _mm512_mask_broadcastss_ps(_mm512_set1_ps(others), kLastLanes, _mm_load_ss(&last));
}

Bin swapped(Bin a) {
    return __builtin_shufflevector(a, a, 8, 9, 10, 11, 12, 13, 14, 15, 0, 1, 2, 3, 4, 5, 6, 7);
}

Bin conjugate(Bin a) {
    constexpr BinInts kSign = {0,       0,       0,       0,       0,       0,       0,       0,
                               1 << 31, 1 << 31, 1 << 31, 1 << 31, 1 << 31, 1 << 31, 1 << 31, 1 << 31};
    return reinterpret_cast<Bin>(reinterpret_cast<BinInts>(a) ^ kSign);
}

Bin timesMinusI(Bin a) {
    return conjugate(swapped(a));
}

// a * conj(re + i im), of a and a times -i.
Bin timesConjugate(Bin a, Bin times_minus_i, float re, float im) {
    return a * re + times_minus_i * im;
}

// A twiddle factor: one cosine; sines with the sign that the real or the imaginary part needs.
struct Turn {
    Bin cosine, sine;
};

Turn turnOf(float cosine, float sine) {
    const Bin sines = _mm512_set1_ps(sine);
    return {_mm512_set1_ps(cosine), -conjugate(sines)};
}

Bin turned(Bin a, const Turn& turn) {
    return a * turn.cosine + swapped(a) * turn.sine;
}

#else

#ifdef __AVX__

constexpr int kTogether = 2;

using Part = Lanes;

Part loadPart(const Lanes& from) {
    return from;
}

void storePart(const Part& value, Lanes* to) {
    *to = value;
}

Part partOf(const float& others, const float& last) {
    constexpr int kLastLane = 0x80;
    return _mm256_blend_ps(_mm256_broadcast_ss(&others), _mm256_broadcast_ss(&last), kLastLane);
}

#else

constexpr int kTogether = 1;

typedef float Quad __attribute__((vector_size(16), may_alias));

struct Part {
    Quad low, high;
};

Part loadPart(const Lanes& from) {
    const Quad* quads = reinterpret_cast<const Quad*>(&from);
    return {quads[0], quads[1]};
}

void storePart(const Part& value, Lanes* to) {
    Quad* quads = reinterpret_cast<Quad*>(to);
    quads[0] = value.low;
    quads[1] = value.high;
}

Part partOf(const float& others, const float& last) {
    return {Quad{others, others, others, others}, Quad{others, others, others, last}};
}

Part operator+(const Part& a, const Part& b) {
    return {a.low + b.low, a.high + b.high};
}

Part operator-(const Part& a, const Part& b) {
    return {a.low - b.low, a.high - b.high};
}

Part operator-(const Part& a) {
    return {-a.low, -a.high};
}

Part operator*(const Part& a, const Part& b) {
    return {a.low * b.low, a.high * b.high};
}

Part operator*(const Part& a, float factor) {
    return {a.low * factor, a.high * factor};
}

#endif

struct Bin {
    Part re, im;
};

// Part by part: compilers copy a structure through memory.
Bin load(const LaneBin& from) {
    return {loadPart(from.re), loadPart(from.im)};
}

void store(const Bin& value, LaneBin* to) {
    storePart(value.re, &to->re);
    storePart(value.im, &to->im);
}

Bin zero() {
    return {Part{}, Part{}};
}

Bin factors(const float& others, const float& last) {
    const Part part = partOf(others, last);
    return {part, part};
}

Bin operator+(const Bin& a, const Bin& b) {
    return {a.re + b.re, a.im + b.im};
}

Bin operator-(const Bin& a, const Bin& b) {
    return {a.re - b.re, a.im - b.im};
}

Bin operator*(const Bin& a, const Bin& b) {
    return {a.re * b.re, a.im * b.im};
}

Bin operator*(const Bin& a, float factor) {
    return {a.re * factor, a.im * factor};
}

Bin conjugate(const Bin& a) {
    return {a.re, -a.im};
}

Bin timesMinusI(const Bin& a) {
    return {a.im, -a.re};
}

Bin timesConjugate(const Bin& a, const Bin&, float re, float im) {
    return {a.re * re + a.im * im, a.im * re - a.re * im};
}

// A twiddle factor.
struct Turn {
    float cosine, sine;
};

Turn turnOf(float cosine, float sine) {
    return {cosine, sine};
}

Bin turned(const Bin& a, const Turn& turn) {
    return {a.re * turn.cosine - a.im * turn.sine, a.im * turn.cosine + a.re * turn.sine};
}

#endif

}  // namespace
}  // namespace reference_engine
