// Transforms between 16-bit values, with scales that no hook uses. A result must not depend on its position,
// in a vector or by itself, at the limits of 16 and 32 bits and beyond.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "kernel_check/references/fft_hooks.h"
#include "tests/webrtc_common/each_variant.h"
#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/fftpack/real_fft.h"

namespace quill::fftpack {
namespace {

using test::Samples;

// Lengths with one pass and with several, with vectors and single values, and with a factor of the general
// pass.
constexpr int kLengths[] = {1, 2, 4, 5, 7, 8, 9, 10, 14, 16, 32, 60, 64, 128, 256, 320};

// Both sides of each limit: 16 bits, 32 bits, the fractions of a float, and NaN.
std::vector<float> values() {
    std::vector<float> all;
    for (const float limit : {0.0f, 1.0f, 32767.0f, 32768.0f, 65535.0f, 65536.0f, 8388608.0f, 33554432.0f,
                              2147483520.0f, 2147483648.0f, 4294967296.0f, 1e30f, INFINITY, NAN}) {
        for (const float offset : {-1.5f, -0.5f, 0.0f, 0.5f, 0.99f}) {
            all.push_back(limit + offset);
            all.push_back(-(limit + offset));
        }
    }
    return all;
}

struct Tables {
    explicit Tables(int n) : r(static_cast<size_t>(n)), wsave(2 * r.size() + 15) {
        __ogg_fdrffti(n, wsave.data(), ifac.data());
    }
    std::vector<float> r, wsave;
    std::array<int, 20> ifac{};
};

class SampleTransform : public test::EachVariant<RealFftVariant> {
  protected:
    static Samples forward(const Samples& in, float scale) {
        const int n = static_cast<int>(in.size());
        Tables t(n);
        Samples out(in.size() + 2);
        GetParam().forward_samples(n, in.data(), scale, out.data(), t.r.data(), t.wsave.data(),
                                   t.ifac.data());
        return out;
    }
    static Samples backward(const Samples& in, float gain) {
        const int n = static_cast<int>(in.size()) - 2;
        Tables t(n);
        Samples out(in.size() - 2);
        GetParam().backward_samples(n, in.data(), gain, out.data(), t.r.data(), t.wsave.data(),
                                    t.ifac.data());
        return out;
    }
};

INSTANTIATE_FOR_EACH_VARIANT(SampleTransform, kRealFftVariants);

// The real parts of an impulse's spectrum are all 1.
TEST_P(SampleTransform, ForwardKeepsTheLow16BitsOfATruncation) {
    for (const int n : kLengths) {
        Samples impulse(static_cast<size_t>(n));
        impulse[0] = 1;
        for (const float value : values()) {
            const auto expected = static_cast<int16_t>(test::truncated(static_cast<double>(value)));
            const Samples out = forward(impulse, value);
            EXPECT_EQ(out[1], expected) << value << " of " << n;
            for (size_t k = 2; k <= impulse.size(); k += 2) {
                EXPECT_EQ(out[k], expected) << value << " of " << n << " at " << k;
            }
        }
    }
}

// With nothing but bin 0, all samples are twice its stored value.
TEST_P(SampleTransform, BackwardRoundsAndSaturates) {
    for (const int n : kLengths) {
        if (n == 1) continue;  // the first value is the last, too
        Samples spectrum(static_cast<size_t>(n) + 2);
        spectrum[0] = 1;
        for (const float value : values()) {
            if (std::isnan(value)) continue;
            const float gain = value * 512.0f;
            const int16_t expected = test::saturatedFromQ10(2.0f * gain + 512.0f);
            EXPECT_EQ(backward(spectrum, gain), Samples(static_cast<size_t>(n), expected))
                << value << " of " << n;
        }
    }
}

TEST_P(SampleTransform, BackwardDoublesTheFirstAndTheLastValue) {
    for (const int n : {2, 4, 8, 16, 64}) {
        Samples spectrum(static_cast<size_t>(n) + 2);
        spectrum[0] = 100;
        spectrum[1] = 9999;  // the imaginary part of bin 0
        spectrum[static_cast<size_t>(n)] = 30;
        const Samples out = backward(spectrum, 1024.0f);
        for (size_t i = 0; i < out.size(); ++i) EXPECT_EQ(out[i], i % 2 == 0 ? 260 : 140) << i << " of " << n;
    }
}

}  // namespace
}  // namespace quill::fftpack
