// The quarter-wave cosine transforms: a real FFT of the same length between two rotations.
#include <cmath>
#include <cstddef>

#include "webrtc_common/fftpack/fftpack.h"

namespace {

constexpr float kSqrt2 = 1.41421356237309504880f;

// Both: n above 2. wsave holds n cosines, then the arrays of the real FFT, whose scratch comes first and is
// free outside of it.
void forward(std::size_t n, float* x, float* wsave, int* ifac) {
    const float* const cosines = wsave;
    float* const folded = wsave + n;
    const bool even = n % 2 == 0;
    for (std::size_t k = 1; 2 * k < n; ++k) {
        folded[k] = x[k] + x[n - k];
        folded[n - k] = x[k] - x[n - k];
    }
    if (even) folded[n / 2] = x[n / 2] + x[n / 2];
    for (std::size_t k = 1; 2 * k < n; ++k) {
        x[k] = cosines[k - 1] * folded[n - k] + cosines[n - k - 1] * folded[k];
        x[n - k] = cosines[k - 1] * folded[k] - cosines[n - k - 1] * folded[n - k];
    }
    if (even) x[n / 2] = cosines[n / 2 - 1] * folded[n / 2];
    __ogg_fdrfftf(static_cast<int>(n), x, wsave + n, ifac);
    for (std::size_t i = 1; i + 1 < n; i += 2) {
        const float difference = x[i] - x[i + 1];
        x[i + 1] = x[i] + x[i + 1];
        x[i] = difference;
    }
}

void backward(std::size_t n, float* x, float* wsave, int* ifac) {
    const float* const cosines = wsave;
    float* const rotated = wsave + n;
    const bool even = n % 2 == 0;
    for (std::size_t i = 1; i + 1 < n; i += 2) {
        const float sum = x[i] + x[i + 1];
        x[i + 1] -= x[i];
        x[i] = sum;
    }
    x[0] += x[0];
    if (even) x[n - 1] += x[n - 1];
    __ogg_fdrfftb(static_cast<int>(n), x, wsave + n, ifac);
    for (std::size_t k = 1; 2 * k < n; ++k) {
        rotated[k] = cosines[k - 1] * x[n - k] + cosines[n - k - 1] * x[k];
        rotated[n - k] = cosines[k - 1] * x[k] - cosines[n - k - 1] * x[n - k];
    }
    if (even) x[n / 2] = cosines[n / 2 - 1] * (x[n / 2] + x[n / 2]);
    for (std::size_t k = 1; 2 * k < n; ++k) {
        x[k] = rotated[k] + rotated[n - k];
        x[n - k] = rotated[k] - rotated[n - k];
    }
    x[0] += x[0];
}

}  // namespace

void __ogg_fdcosqi(int n, float* wsave, int* ifac) {
    constexpr float kHalfPi = 1.57079632679489661923f;
    if (n <= 0) return;
    const float unit = kHalfPi / static_cast<float>(n);
    float count = 0.0f;
    for (int k = 0; k < n; ++k) {
        count += 1.0f;
        wsave[k] = static_cast<float>(std::cos(static_cast<double>(count * unit)));
    }
    __ogg_fdrffti(n, wsave + n, ifac);
}

void __ogg_fdcosqf(int n, float* x, float* wsave, int* ifac) {
    if (n == 2) {
        const float scaled = kSqrt2 * x[1];
        x[1] = x[0] - scaled;
        x[0] += scaled;
    } else if (n > 2) {
        forward(static_cast<std::size_t>(n), x, wsave, ifac);
    }
}

void __ogg_fdcosqb(int n, float* x, float* wsave, int* ifac) {
    if (n == 1) {
        x[0] *= 4.0f;
    } else if (n == 2) {
        const float sum = 4.0f * (x[0] + x[1]);
        x[1] = 2.0f * kSqrt2 * (x[0] - x[1]);
        x[0] = sum;
    } else if (n > 2) {
        backward(static_cast<std::size_t>(n), x, wsave, ifac);
    }
}
