// The complex multiply against its reference: four values at a time, then one by one.
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <type_traits>
#include <vector>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/dsp.h"
#include "tests/webrtc_common/dsp/each_build.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::test {
namespace {

using media::se_wrapper::vcmul_i16;
using Samples = std::vector<int16_t>;

static_assert(std::is_same_v<decltype(&vcmul_i16), media::se_wrapper::VCMulRoutine>);

Samples reference(Samples a, Samples b) {
    Samples out(a.size());
    referenceVcmul(a.data(), b.data(), out.data(), static_cast<uint16_t>(a.size() / 2));
    return out;
}

Samples filled(size_t n, const Filler& filler, uint32_t seed) {
    std::mt19937 random(seed);
    Samples values(2 * n);
    filler.fill(values.data(), values.size(), random);
    return values;
}

Samples multiply(Samples a, Samples b) {
    Samples out(a.size(), 0x5a5a);
    vcmul_i16(a.data(), b.data(), out.data(), static_cast<uint16_t>(a.size() / 2));
    return out;
}

// n times the same product.
Samples multiplyValues(size_t n, int16_t ar, int16_t ai, int16_t br, int16_t bi) {
    Samples a, b;
    for (size_t k = 0; k < n; ++k) {
        a.insert(a.end(), {ar, ai});
        b.insert(b.end(), {br, bi});
    }
    return multiply(a, b);
}

class ComplexMultiply : public EachDspBuild {};
INSTANTIATE_FOR_EACH_DSP_BUILD(ComplexMultiply);

TEST_P(ComplexMultiply, MatchesTheReferenceForEveryLengthAndPairOfFillers) {
    for (size_t n = 0; n <= 21; ++n) {
        for (const Filler& fa : kFillers) {
            for (const Filler& fb : kFillers) {
                const Samples a = filled(n, fa, 1), b = filled(n, fb, 2);
                EXPECT_EQ(multiply(a, b), reference(a, b)) << n << " " << fa.name << " " << fb.name;
            }
        }
    }
}

TEST_P(ComplexMultiply, MatchesTheReferenceAtTheLongestLength) {
    const Samples a = filled(65535, kUniform, 1), b = filled(65535, kUniform, 2);
    EXPECT_EQ(multiply(a, b), reference(a, b));
}

TEST_P(ComplexMultiply, OfTwoHalvesIsAQuarter) {
    EXPECT_EQ(multiplyValues(1, 16384, 0, 16384, 0), (Samples{8192, 0}));
    EXPECT_EQ(multiplyValues(4, 16384, 0, 16384, 0), (Samples{8192, 0, 8192, 0, 8192, 0, 8192, 0}));
}

TEST_P(ComplexMultiply, OfMinusOneByMinusOneSaturates) {
    EXPECT_EQ(multiplyValues(1, -32768, 0, -32768, 0), (Samples{32767, 0}));
    EXPECT_EQ(multiplyValues(4, -32768, 0, -32768, 0), (Samples{32767, 0, 32767, 0, 32767, 0, 32767, 0}));
}

TEST_P(ComplexMultiply, AnImaginaryPartOfMinusOneKeepsItsSignInFoursOnly) {
    EXPECT_EQ(multiplyValues(4, 0, -32768, 0, 16384), (Samples{-16384, 0, -16384, 0, -16384, 0, -16384, 0}));
    EXPECT_EQ(multiplyValues(1, 0, -32768, 0, 16384), (Samples{16384, 0}));
    for (const size_t n :
         {5u, 7u, 8u, 12u, 13u, 15u, 23u}) {  // whole vectors of either width, with and without a remainder
        const Samples product = multiplyValues(n, 0, -32768, 0, 16384);
        for (size_t k = 0; k < n; ++k)
            EXPECT_EQ(product[2 * k], k < n / 4 * 4 ? -16384 : 16384) << k << " of " << n;
    }
}

TEST_P(ComplexMultiply, BothPathsAgreeForEveryOtherImaginaryPart) {
    const Samples fours = multiplyValues(4, -32768, -32767, 32767, -32768);
    const Samples one = multiplyValues(1, -32768, -32767, 32767, -32768);
    EXPECT_EQ(Samples(fours.begin(), fours.begin() + 2), one);
}

TEST_P(ComplexMultiply, SumsOfTwoToThe31Wrap) {
    EXPECT_EQ(multiplyValues(1, -32768, -32768, -32768, -32768), (Samples{0, -32768}));
    EXPECT_EQ(multiplyValues(4, -32768, -32768, -32768, -32768), Samples(8, -32768));
}

TEST_P(ComplexMultiply, TouchesNothingOutsideItsVectors) {
    using Edge = GuardedBytes::Edge;
    for (size_t n = 0; n <= 21; ++n) {
        for (const Edge edge : {Edge::kBegin, Edge::kEnd}) {
            const GuardedBuffer<int16_t> a(2 * n, edge), b(2 * n, edge), out(2 * n, edge);
            vcmul_i16(a.data(), b.data(), out.data(), static_cast<uint16_t>(n));
        }
    }
}

TEST_P(ComplexMultiply, MayWriteOverEitherFactor) {
    for (size_t n = 1; n <= 13; ++n) {
        Samples a = filled(n, kUniform, 1), b = filled(n, kUniform, 2);
        const Samples expected = reference(a, b);
        Samples over_b = b;
        vcmul_i16(a.data(), over_b.data(), over_b.data(), static_cast<uint16_t>(n));
        vcmul_i16(a.data(), b.data(), a.data(), static_cast<uint16_t>(n));
        EXPECT_EQ(a, expected);
        EXPECT_EQ(over_b, expected);
    }
}

}  // namespace
}  // namespace quill::test
