// The tables of the real FFT hold the same bits on every processor, although the C library's sines do not: none of them is
// so close to the middle between two floats that its last bits would matter.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

#include "webrtc_common/fftpack/fftpack.h"

namespace {

constexpr int kUnits = 4;  // in the last place of a double; the C library is within one

bool isFarFromTheMiddle(double value) {
    double low = value, high = value;
    for (int i = 0; i < kUnits; ++i) {
        low = std::nextafter(low, -std::numeric_limits<double>::infinity());
        high = std::nextafter(high, std::numeric_limits<double>::infinity());
    }
    return static_cast<float>(low) == static_cast<float>(high);
}

// Every angle is a product of floats: whole number, whole number over the length times two pi.
void expectFarFromTheMiddle(int n) {
    std::vector<float> wsave(2 * static_cast<size_t>(n) + 15);
    std::vector<int> factors(20);
    __ogg_fdrffti(n, wsave.data(), factors.data());
    const float unit = 6.28318530717958647692f / static_cast<float>(n);
    int groups = 1;
    for (int f = 0; f < factors[1]; ++f) {
        const int radix = factors[static_cast<size_t>(f) + 2];
        const int width = n / (groups * radix);
        for (int j = 1; j < radix; ++j) {
            const float step = static_cast<float>(j * groups) * unit;
            for (int m = 1; 2 * m < width; ++m) {
                const double angle = static_cast<double>(static_cast<float>(m) * step);
                ASSERT_TRUE(isFarFromTheMiddle(std::cos(angle))) << n << " " << angle;
                ASSERT_TRUE(isFarFromTheMiddle(std::sin(angle))) << n << " " << angle;
            }
        }
        groups *= radix;
    }
}

TEST(Twiddles, TheLastBitsOfTheSinesDoNotMatter) {
    for (int n = 2; n <= 2048; ++n) expectFarFromTheMiddle(n);
    for (int n = 4096; n <= 65536; n *= 2) expectFarFromTheMiddle(n);
}

}  // namespace
