#include "reference_engine/routines/elementary.h"

#include <cmath>
#include <cstddef>

namespace reference_engine {
namespace {

constexpr double kLn2 = 0.69314718055994530942;
constexpr double kLog10Of2 = 0.30102999566398119521;
constexpr double kLog2Of10 = 3.32192809488736234787;
constexpr double kTwoOverPi = 0.63661977236758134308;

// Half of pi in three parts; a product of the first two with a whole number of up to 20 bits is exact (Cody and Waite,
// Software Manual for the Elementary Functions, 1980).
constexpr double kHalfPi1 = 0x1.921FB544p+0;
constexpr double kHalfPi2 = 0x1.0B4611A6p-34;
constexpr double kHalfPi3 = 0x1.3198A2E037073p-69;

// The first terms of the Taylor series of sine over x and of cosine, in x squared.
constexpr double kSine[] = {1.0,
                            -1.0 / 6,
                            1.0 / 120,
                            -1.0 / 5040,
                            1.0 / 362880,
                            -1.0 / 39916800,
                            1.0 / 6227020800,
                            -1.0 / 1307674368000,
                            1.0 / 355687428096000};
constexpr double kCosine[] = {1.0,
                              -1.0 / 2,
                              1.0 / 24,
                              -1.0 / 720,
                              1.0 / 40320,
                              -1.0 / 3628800,
                              1.0 / 479001600,
                              -1.0 / 87178291200,
                              1.0 / 20922789888000,
                              -1.0 / 6402373705728000};
// Of the inverse hyperbolic tangent over x, and of the exponential.
constexpr double kAreaTangent[] = {1.0,      1.0 / 3,  1.0 / 5,  1.0 / 7,  1.0 / 9,  1.0 / 11,
                                   1.0 / 13, 1.0 / 15, 1.0 / 17, 1.0 / 19, 1.0 / 21, 1.0 / 23};
constexpr double kExponential[] = {1.0,
                                   1.0,
                                   1.0 / 2,
                                   1.0 / 6,
                                   1.0 / 24,
                                   1.0 / 120,
                                   1.0 / 720,
                                   1.0 / 5040,
                                   1.0 / 40320,
                                   1.0 / 362880,
                                   1.0 / 3628800,
                                   1.0 / 39916800,
                                   1.0 / 479001600,
                                   1.0 / 6227020800,
                                   1.0 / 87178291200};

template <size_t kCount>
double series(const double (&terms)[kCount], double x) {
    double sum = terms[kCount - 1];
    for (size_t i = kCount - 1; i > 0; --i) sum = sum * x + terms[i - 1];
    return sum;
}

double sineOfEighth(double x) {
    return x * series(kSine, x * x);
}

double cosineOfEighth(double x) {
    return series(kCosine, x * x);
}

// The sine of x plus `quarters` quarters of a turn.
double sineFrom(double x, int quarters) {
    const double nearest = std::floor(x * kTwoOverPi + 0.5);
    const double rest = ((x - nearest * kHalfPi1) - nearest * kHalfPi2) - nearest * kHalfPi3;
    const int quarter = (static_cast<int>(nearest) + quarters) & 3;
    const double value = (quarter & 1) != 0 ? cosineOfEighth(rest) : sineOfEighth(rest);
    return (quarter & 2) != 0 ? -value : value;
}

}  // namespace

double sine(double x) {
    return sineFrom(x, 0);
}

double cosine(double x) {
    return sineFrom(x, 1);
}

double logarithm2(double x) {
    int exponent = 0;
    double mantissa = std::frexp(x, &exponent);
    if (mantissa < M_SQRT1_2) {
        mantissa *= 2;
        --exponent;
    }
    const double tangent = (mantissa - 1) / (mantissa + 1);
    return exponent + 2 / kLn2 * tangent * series(kAreaTangent, tangent * tangent);
}

double powerOf2(double x) {
    const double nearest = std::floor(x + 0.5);
    return std::ldexp(series(kExponential, (x - nearest) * kLn2), static_cast<int>(nearest));
}

double decibels(double power) {
    return 10 * kLog10Of2 * logarithm2(power);
}

double amplitudeOf(double decibels) {
    return powerOf2(decibels * (kLog2Of10 / 20));
}

}  // namespace reference_engine
