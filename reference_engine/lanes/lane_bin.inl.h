// Arithmetic on one bin of eight spectra, for the inner loops, in vectors that have the size of a register: one for both real
// and imaginary parts with AVX-512, one each with AVX, two each otherwise. Each number is computed by the same operations
// in all three. Included by one file for each instruction set.
#pragma once

#include "reference_engine/lanes/lanes.h"

namespace reference_engine {
namespace {

#ifdef __AVX512F__

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
Bin factors(float others, float last) {
    const Bin all = Bin{} + others;
    const Bin with_last = Bin{} + last;
    return __builtin_shufflevector(all, with_last, 0, 1, 2, 3, 4, 5, 6, 23, 8, 9, 10, 11, 12, 13, 14, 31);
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

Bin turned(Bin a, float cosine, float sine) {
    return a * cosine - timesMinusI(a) * sine;
}

// Of the first lane and of the last.
void powersOf(Bin a, float* first, float* last) {
    const Bin squares = a * a;
    const Lanes powers = __builtin_shufflevector(squares, squares, 0, 1, 2, 3, 4, 5, 6, 7) +
                         __builtin_shufflevector(squares, squares, 8, 9, 10, 11, 12, 13, 14, 15);
    *first = powers[0];
    *last = powers[kLanes - 1];
}

#else

#ifdef __AVX__

using Part = Lanes;

Part loadPart(const Lanes& from) {
    return from;
}

void storePart(const Part& value, Lanes* to) {
    *to = value;
}

Part partOf(float others, float last) {
    return Part{others, others, others, others, others, others, others, last};
}

float firstOf(const Part& a) {
    return a[0];
}

float lastOf(const Part& a) {
    return a[kLanes - 1];
}

#else

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

Part partOf(float others, float last) {
    return {Quad{others, others, others, others}, Quad{others, others, others, last}};
}

float firstOf(const Part& a) {
    return a.low[0];
}

float lastOf(const Part& a) {
    return a.high[3];
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

Bin factors(float others, float last) {
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

Bin turned(const Bin& a, float cosine, float sine) {
    return {a.re * cosine - a.im * sine, a.im * cosine + a.re * sine};
}

void powersOf(const Bin& a, float* first, float* last) {
    const Part powers = a.re * a.re + a.im * a.im;
    *first = firstOf(powers);
    *last = lastOf(powers);
}

#endif

}  // namespace
}  // namespace reference_engine
