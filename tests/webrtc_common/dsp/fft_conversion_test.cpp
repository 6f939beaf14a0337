// The conversions around the FFT with values that no transform of 16-bit samples gives: they must still be
// the same in the eights that are converted together and one by one.
#include "webrtc_common/se_wrapper/dsp/fft_conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "tests/kernel_check/reference_fft.h"

namespace quill::media::se_wrapper {
namespace {

using test::Samples;
using Floats = std::vector<float>;

// Both sides of each limit: 16 bits, 32 bits, the fractions of a float, and what is no number.
Floats values() {
    Floats all;
    for (const float limit : {0.0f, 1.0f, 32767.0f, 32768.0f, 65535.0f, 65536.0f, 8388608.0f, 33554432.0f,
                              2147483520.0f, 2147483648.0f, 4294967296.0f, 1e30f, INFINITY, NAN}) {
        for (const float offset : {-1.5f, -0.5f, 0.0f, 0.5f, 0.99f}) {
            all.push_back(limit + offset);
            all.push_back(-(limit + offset));
        }
    }
    return all;
}

// Every value at every place of an eight and behind it.
template <class Convert>
void expectAtEveryPlace(float value, int16_t expected, const Convert& convert) {
    for (size_t place = 0; place < 13; ++place) {
        Floats in(13, 1.0f);
        in[place] = value;
        Samples out(13);
        convert(in.data(), out.data(), 13);
        EXPECT_EQ(out[place], expected) << value << " at " << place;
    }
}

class FftConversion : public ::testing::TestWithParam<FftConversions> {
  protected:
    void SetUp() override {
        if (!(CPUInfo().*GetParam().feature)) GTEST_SKIP() << "this processor has no " << GetParam().name;
    }
    static const FftConversions& build() { return GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(EachBuild, FftConversion, ::testing::ValuesIn(kFftConversions),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(FftConversion, NarrowingKeepsTheLow16BitsOfATruncation) {
    for (const float value : values()) {
        const auto expected = static_cast<int16_t>(test::truncated(static_cast<double>(value)));
        expectAtEveryPlace(value, expected, [](const float* in, int16_t* out, int n) {
            build().narrowScaled(in, 1.0f, out, n);
        });
    }
}

TEST_P(FftConversion, NarrowingDoesNotSaturate) {
    int16_t out;
    const float just_outside = 32768.0f;
    build().narrowScaled(&just_outside, 1.0f, &out, 1);
    EXPECT_EQ(out, -32768);
}

TEST_P(FftConversion, NarrowingByQ10RoundsAndSaturates) {
    for (const float value : values()) {
        const int32_t shifted = test::truncated(static_cast<double>(value * 1024.0f + 512.0f)) >> 10;
        const auto expected = static_cast<int16_t>(std::clamp(shifted, -32768, 32767));
        expectAtEveryPlace(value, expected, [](const float* in, int16_t* out, int n) {
            build().narrowQ10(in, 1024.0f, out, n);
        });
    }
}

TEST(FftConversionOfOne, HalvingTruncatesTheHalf) {
    for (const float value : values()) {
        const double half = static_cast<double>(value) * 0.5;
        EXPECT_EQ(narrowScaledHalf(value, 1.0f), static_cast<int16_t>(test::truncated(half))) << value;
    }
}

TEST_P(FftConversion, WideningIsExactForEverySample) {
    Samples in(65536 + 5);
    for (size_t i = 0; i < in.size(); ++i) in[i] = static_cast<int16_t>(i & 0xffffu);
    Floats out(in.size());
    build().widen(in.data(), out.data(), static_cast<int>(in.size()));
    for (size_t i = 0; i < in.size(); ++i) ASSERT_EQ(out[i], static_cast<float>(in[i])) << i;
}

TEST_P(FftConversion, OfNothingWritesNothing) {
    int16_t narrow = 7;
    float wide = 7.0f;
    for (const int count : {0, -1}) {
        build().widen(&narrow, &wide, count);
        build().narrowScaled(&wide, 1.0f, &narrow, count);
        build().narrowQ10(&wide, 1.0f, &narrow, count);
    }
    EXPECT_EQ(narrow, 7);
    EXPECT_EQ(wide, 7.0f);
}

}  // namespace
}  // namespace quill::media::se_wrapper
