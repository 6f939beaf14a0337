#include "kernel_check/references/transforms.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include "webrtc_common/fftpack/fftpack.h"

namespace quill::test {
namespace {

// cos and sin of 2 pi i / period, with exact reduction.
class Circle {
  public:
    explicit Circle(size_t period) : cos_(period), sin_(period) {
        constexpr long double kTwoPi = 6.283185307179586476925286766559L;
        for (size_t i = 0; i < period; ++i) {
            const long double angle = kTwoPi * static_cast<long double>(i) / static_cast<long double>(period);
            cos_[i] = std::cos(angle);
            sin_[i] = std::sin(angle);
        }
    }
    long double cos(size_t i) const { return cos_[i % cos_.size()]; }
    long double sin(size_t i) const { return sin_[i % sin_.size()]; }

  private:
    Exact cos_, sin_;
};

}  // namespace

RealFft::RealFft(int length) : n(length), wsave(2 * static_cast<size_t>(length) + 15) {
    __ogg_fdrffti(n, wsave.data(), ifac.data());
}
Floats RealFft::forward(Floats r) {
    __ogg_fdrfftf(n, r.data(), wsave.data(), ifac.data());
    return r;
}
Floats RealFft::backward(Floats r) {
    __ogg_fdrfftb(n, r.data(), wsave.data(), ifac.data());
    return r;
}

CosineTransform::CosineTransform(int length) : n(length), wsave(3 * static_cast<size_t>(length) + 15) {
    __ogg_fdcosqi(n, wsave.data(), ifac.data());
}
Floats CosineTransform::forward(Floats x) {
    __ogg_fdcosqf(n, x.data(), wsave.data(), ifac.data());
    return x;
}
Floats CosineTransform::backward(Floats x) {
    __ogg_fdcosqb(n, x.data(), wsave.data(), ifac.data());
    return x;
}

Exact directForward(const Floats& r) {
    const size_t n = r.size();
    const Circle circle(n);
    Exact out(n);
    out[0] = std::accumulate(r.begin(), r.end(), 0.0L);
    for (size_t k = 1; 2 * k <= n; ++k) {
        long double re = 0, im = 0;
        for (size_t j = 0; j < n; ++j) {
            re += r[j] * circle.cos(j * k);
            im -= r[j] * circle.sin(j * k);
        }
        out[2 * k - 1] = re;
        if (2 * k < n) out[2 * k] = im;
    }
    return out;
}

Exact directBackward(const Floats& r) {
    const size_t n = r.size();
    const Circle circle(n);
    Exact out(n, r[0]);
    for (size_t j = 0; j < n; ++j) {
        for (size_t k = 1; 2 * k < n; ++k) {
            out[j] += 2 * (r[2 * k - 1] * circle.cos(j * k) - r[2 * k] * circle.sin(j * k));
        }
        if (n > 1 && n % 2 == 0) out[j] += j % 2 == 0 ? r[n - 1] : -r[n - 1];
    }
    return out;
}

Exact directCosineForward(const Floats& x) {
    const size_t n = x.size();
    const Circle circle(4 * n);
    Exact out(n, x[0]);
    for (size_t i = 0; i < n; ++i) {
        for (size_t k = 1; k < n; ++k) out[i] += 2 * x[k] * circle.cos((2 * i + 1) * k);
    }
    return out;
}

Exact directCosineBackward(const Floats& x) {
    const size_t n = x.size();
    const Circle circle(4 * n);
    Exact out(n);
    for (size_t i = 0; i < n; ++i) {
        for (size_t k = 0; k < n; ++k) out[i] += 4 * x[k] * circle.cos((2 * k + 1) * i);
    }
    return out;
}

std::vector<int> smallLengths() {
    std::vector<int> lengths(600);
    std::iota(lengths.begin(), lengths.end(), 1);
    return lengths;
}

std::vector<int> largeLengths() {
    return {1024, 2048, 4096, 2187, 3125, 2401, 1331, 1920, 2520, 1536, 601, 1021, 2039, 2 * 1021, 3 * 701};
}

Floats noise(int n) {
    std::mt19937 random(static_cast<uint32_t>(n));
    std::uniform_real_distribution<float> uniform(-1.0f, 1.0f);
    Floats x(static_cast<size_t>(n));
    for (float& value : x) value = uniform(random);
    return x;
}

double norm(const Floats& x) {
    double sum = 0;
    for (const float value : x) sum += static_cast<double>(value) * static_cast<double>(value);
    return std::sqrt(sum);
}

double largestDifference(const Floats& x, const Exact& exact) {
    double largest = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        largest = std::max(largest, static_cast<double>(std::abs(x[i] - exact[i])));
    }
    return largest;
}

double errorFactor(const std::array<int, 20>& ifac) {
    double factor = 0;
    for (int f = 0; f < ifac[1]; ++f) {
        const double p = ifac[static_cast<size_t>(2 + f)];
        factor += 2 + p * p / 8;
    }
    return factor;
}

}  // namespace quill::test
