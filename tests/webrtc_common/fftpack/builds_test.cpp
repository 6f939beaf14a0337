// Each build of the real FFT against an independent scalar implementation: the same bits for every input.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/published_fft.h"
#include "kernel_check/references/transforms.h"
#include "tests/webrtc_common/each_variant.h"
#include "webrtc_common/fftpack/real_fft.h"

namespace quill::test {
namespace {

using fftpack::RealFftVariant;
using Limits = std::numeric_limits<float>;

class RealFftBuild : public EachVariant<RealFftVariant> {};
INSTANTIATE_FOR_EACH_VARIANT(RealFftBuild, fftpack::kRealFftVariants);

std::vector<int> everyLength() {
    std::vector<int> lengths = smallLengths();
    for (const int n : largeLengths()) lengths.push_back(n);
    for (const int n : {640, 768, 1280, 8192, 15625}) lengths.push_back(n);
    return lengths;
}

Floats drawn(int n, float (*value)(std::mt19937& random)) {
    std::mt19937 random(static_cast<uint32_t>(n));
    Floats x(static_cast<size_t>(n));
    for (float& v : x) v = value(random);
    return x;
}

float anySample(std::mt19937& random) {
    return static_cast<float>(static_cast<int>(random() % 65536) - 32768);
}
float anyPattern(std::mt19937& random) {
    const auto bits = static_cast<uint32_t>(random());
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}
float anyZeroOrDenormal(std::mt19937& random) {
    const float values[] = {0.0f, -0.0f, Limits::denorm_min(), -Limits::denorm_min(), Limits::min()};
    return values[random() % 5] * static_cast<float>(random() % 3);
}
float anyExtreme(std::mt19937& random) {
    const float values[] = {Limits::max(), -Limits::max(), 1.0f, -0.0f, 1e30f};
    return values[random() % 5];
}
// Few enough that some results stay finite.
float rarelyInfinite(std::mt19937& random) {
    return random() % 97 == 0 ? Limits::infinity() : static_cast<float>(random() % 8) - 4.0f;
}

// Bit patterns, so that zeros of different sign differ. Results that are no number need only agree in that.
void expectSameBits(const Floats& is, const Floats& should) {
    for (size_t i = 0; i < is.size(); ++i) {
        if (std::isnan(is[i]) && std::isnan(should[i])) continue;
        ASSERT_EQ(std::memcmp(&is[i], &should[i], sizeof(float)), 0)
            << i << " of " << is.size() << ": " << is[i] << " instead of " << should[i];
    }
}

void expectSameTransforms(const RealFftVariant& build, float (*value)(std::mt19937& random)) {
    for (const int n : everyLength()) {
        RealFft fft(n);
        const Floats x = drawn(n, value);
        Floats is = x, should = x;
        build.forward(n, is.data(), fft.wsave.data(), fft.ifac.data());
        publishedForwardFft(n, should.data());
        ASSERT_NO_FATAL_FAILURE(expectSameBits(is, should)) << "forward";
        is = should = x;
        build.backward(n, is.data(), fft.wsave.data(), fft.ifac.data());
        publishedBackwardFft(n, should.data());
        ASSERT_NO_FATAL_FAILURE(expectSameBits(is, should)) << "backward";
    }
}

TEST_P(RealFftBuild, GivesTheScalarBitsOfSamples) {
    expectSameTransforms(GetParam(), anySample);
}

TEST_P(RealFftBuild, GivesTheScalarBitsOfAnyPatterns) {
    expectSameTransforms(GetParam(), anyPattern);
}

TEST_P(RealFftBuild, GivesTheScalarBitsOfSignedZerosAndDenormals) {
    expectSameTransforms(GetParam(), anyZeroOrDenormal);
}

TEST_P(RealFftBuild, GivesTheScalarBitsOfExtremes) {
    expectSameTransforms(GetParam(), anyExtreme);
}

TEST_P(RealFftBuild, GivesTheScalarBitsOfInfinities) {
    expectSameTransforms(GetParam(), rarelyInfinite);
}

TEST_P(RealFftBuild, GivesTheScalarBitsAtAnyAlignment) {
    for (const int n : {12, 60, 128, 256, 320}) {
        const RealFft fft(n);
        const Floats x = noise(n);
        Floats should = x;
        publishedForwardFft(n, should.data());
        for (size_t offset = 0; offset < 16; ++offset) {
            Floats data(offset), wsave((offset * 5) % 16);
            data.insert(data.end(), x.begin(), x.end());
            wsave.insert(wsave.end(), fft.wsave.begin(), fft.wsave.end());
            GetParam().forward(n, data.data() + offset, wsave.data() + (offset * 5) % 16, fft.ifac.data());
            expectSameBits({data.begin() + static_cast<ptrdiff_t>(offset), data.end()}, should);
        }
    }
}

// The work array ends with the tables, as that of a cosine transform may.
TEST_P(RealFftBuild, StaysWithinItsArrays) {
    for (const int n : everyLength()) {
        const RealFft fft(n);
        const auto length = static_cast<size_t>(n);
        for (const auto edge : {GuardedBytes::Edge::kBegin, GuardedBytes::Edge::kEnd}) {
            const GuardedBuffer<float> data(length, edge);
            const GuardedBuffer<float> wsave(2 * length, edge);
            const GuardedBuffer<int> ifac(2 + static_cast<size_t>(fft.ifac[1]), edge);
            std::fill(data.begin(), data.end(), 1.0f);
            std::copy_n(fft.wsave.begin(), wsave.size(), wsave.begin());
            std::copy_n(fft.ifac.begin(), ifac.size(), ifac.begin());
            GetParam().forward(n, data.data(), wsave.data(), ifac.data());
            GetParam().backward(n, data.data(), wsave.data(), ifac.data());
            ASSERT_TRUE(std::equal(wsave.begin() + n, wsave.end(), fft.wsave.begin() + n)) << n;
            ASSERT_TRUE(std::equal(ifac.begin(), ifac.end(), fft.ifac.begin())) << n;
        }
    }
}

}  // namespace
}  // namespace quill::test
