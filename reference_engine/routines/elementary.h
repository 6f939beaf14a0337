// Sines, logarithms and powers with the same bits on every processor: the C library's have other last bits where the
// processor fuses multiplications and additions. These are sums and products in double precision, and functions that are
// exact (square roots, powers of two, rounding). Within 2^-51 of the result, or of 1 where the result is smaller.
// Threads: any. rt-safe.
#pragma once

namespace reference_engine {

// in: radians, up to 2^20 in magnitude.
double sine(double x);
double cosine(double x);

// in: above 0.
double logarithm2(double x);

// in: -1000 to 1000.
double powerOf2(double x);

// Of a ratio of powers, above 0.
double decibels(double power);

// The ratio of amplitudes of so many decibels.
double amplitudeOf(double decibels);

}  // namespace reference_engine
