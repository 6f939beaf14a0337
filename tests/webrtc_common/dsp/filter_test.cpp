// The FIR filter at gain 1.0 and 0.0: its output and its delay.
#include "webrtc_common/se_wrapper/dsp/filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <type_traits>
#include <utility>

#include "common/logging.h"
#include "tests/support/log_capture.h"
#include "tests/webrtc_common/dsp/reference_filter.h"

namespace quill::test {
namespace {

using media::se_wrapper::Filter;
using media::se_wrapper::kHighPass600Hz;
using Samples = std::vector<int16_t>;

static_assert(std::is_same_v<decltype(Filter::FilterParams::coeffs_), const int16_t*>);
static_assert(std::is_same_v<decltype(Filter::FilterParams::num_coeffs_), int32_t>);

Samples constantBlock(int16_t value) {
    return Samples(kFilterBlock, value);
}

Samples impulse(size_t place, int16_t value) {
    Samples block = constantBlock(0);
    block[place] = value;
    return block;
}

// The blocks of a list, one after the other.
Samples joined(const std::vector<Samples>& blocks) {
    Samples all;
    for (const Samples& block : blocks) all.insert(all.end(), block.begin(), block.end());
    return all;
}

TEST(HighPass600Hz, Has55SymmetricTapsThatSumToMinus272) {
    const Samples coeffs = coeffsOf(kHighPass600Hz);
    ASSERT_EQ(coeffs.size(), 55u);
    EXPECT_TRUE(std::equal(coeffs.begin(), coeffs.end(), coeffs.rbegin()));
    EXPECT_EQ(std::accumulate(coeffs.begin(), coeffs.end(), 0), -272);
    EXPECT_EQ(coeffs[27], 31558);
    EXPECT_EQ(
        Samples(coeffs.begin(), coeffs.begin() + 27),
        (Samples{-9,   -34,  -61,  -91,  -123, -158, -197, -239,  -285,  -334,  -387,  -443,  -502, -563,
                 -626, -690, -755, -818, -880, -939, -994, -1045, -1089, -1126, -1157, -1178, -1192}));
}

TEST(Filter, TurnsAConstantIntoTheDcLeakOfTheTableOnce56SamplesHaveEntered) {
    Filter filter(kHighPass600Hz);
    const Samples first = filtered(filter, constantBlock(1000), 1.0F);
    EXPECT_EQ((1000 * -272 + 16384) >> 15, -8);
    EXPECT_EQ(Samples(first.begin() + 55, first.end()), Samples(kFilterBlock - 55, -8));
    EXPECT_EQ(filtered(filter, constantBlock(1000), 1.0F), constantBlock(-8));
}

// At the first output the taps cover 55 samples of silence; then one sample of the block enters with each
// output.
TEST(Filter, SeesInItsFirstBlock55ZeroSamplesOfHistory) {
    Filter filter(kHighPass600Hz);
    const Samples coeffs = coeffsOf(kHighPass600Hz);
    const Samples out = filtered(filter, constantBlock(32767), 1.0F);
    int sum = 0;
    for (size_t i = 0; i < 55; ++i) {
        EXPECT_EQ(out[i], (sum * 32767 + 16384) >> 15) << i;
        sum += coeffs[54 - i];
    }
}

TEST(Filter, AnswersAnImpulseWithItsTapsOneSampleLate) {
    const Samples coeffs{1000, -2000, 3000, 4000, 5000};  // the last tap meets the newest sample
    const Filter::FilterParams params{coeffs.data(), 5};
    Filter filter(params);
    const Samples out = filtered(filter, impulse(0, 16384), 1.0F);
    EXPECT_EQ(Samples(out.begin(), out.begin() + 7), (Samples{0, 2500, 2000, 1500, -1000, 500, 0}));
}

// Kept on purpose.
TEST(Filter, LeavesTheNewestSampleToTheNextBlock) {
    const int16_t identity = 32767;
    const Filter::FilterParams params{&identity, 1};
    Filter filter(params);
    EXPECT_EQ(filtered(filter, impulse(kFilterBlock - 1, 16384), 1.0F), constantBlock(0));
    EXPECT_EQ(filtered(filter, constantBlock(0), 1.0F), impulse(0, 16384));
}

TEST(Filter, DelaysTheFilteredAndTheDrySignalAlike) {
    for (const float gain : {1.0F, 0.0F}) {
        Filter filter(kHighPass600Hz);
        filtered(filter, constantBlock(0), gain);
        filtered(filter, constantBlock(0), gain);
        const Samples out = filtered(filter, impulse(50, 16384), gain);
        EXPECT_EQ(std::max_element(out.begin(), out.end()) - out.begin(), 50 + 28) << gain;
    }
}

TEST(Filter, FadesAtGainZeroToDryOverOneBlockAndThenCopiesTheInput28SamplesLate) {
    Filter filter(kHighPass600Hz);
    ReferenceFilter reference(coeffsOf(kHighPass600Hz));
    NoiseBlocks noise;
    const Samples first = noise.next(), second = noise.next(), third = noise.next();
    EXPECT_EQ(filtered(filter, first, 0.0F), reference.block(first, 0.0F));
    const Samples in = joined({first, second, third});
    const auto late = [&](size_t from) {
        const auto begin = in.begin() + static_cast<std::ptrdiff_t>(from) - 28;
        return Samples(begin, begin + kFilterBlock);
    };
    EXPECT_EQ(filtered(filter, second, 0.0F), late(kFilterBlock));
    EXPECT_EQ(filtered(filter, third, 0.0F), late(2 * kFilterBlock));
}

TEST(Filter, SkipsTheCrossfadeAtGainOneAfterGainOne) {
    Filter filter(kHighPass600Hz);
    Samples coeffs = coeffsOf(kHighPass600Hz);
    NoiseBlocks noise;
    std::vector<Samples> in{Samples(55)}, out;
    for (int block = 0; block < 5; ++block) {
        in.push_back(noise.next());
        out.push_back(filtered(filter, in.back(), 1.0F));
    }
    Samples whole = joined(in), expected(5 * kFilterBlock);
    referenceRFir(whole.data(), coeffs.data(), expected.data(), 54, 5 * kFilterBlock, 1);
    EXPECT_EQ(joined(out), expected);
}

TEST(Filter, MayWriteOverItsInput) {
    Filter apart(kHighPass600Hz), in_place(kHighPass600Hz);
    NoiseBlocks noise;
    for (const float gain : {1.0F, 0.3F, 0.0F, 0.0F, 1.0F}) {
        Samples block = noise.next();
        const Samples expected = filtered(apart, block, gain);
        in_place.filterBlock(block.data(), block.data(), gain);
        EXPECT_EQ(block, expected) << gain;
    }
}

TEST(Filter, LeavesItsInputAlone) {
    Filter filter(kHighPass600Hz);
    NoiseBlocks noise;
    Samples block = noise.next(), out(kFilterBlock);
    const Samples before = block;
    filter.filterBlock(block.data(), out.data(), 0.5F);
    EXPECT_EQ(block, before);
}

TEST(Filter, RefersToItsParametersAndDoesNotCopyThem) {
    Samples coeffs{0};
    const Filter::FilterParams params{coeffs.data(), 1};
    Filter filter(params);
    EXPECT_EQ(filtered(filter, constantBlock(1000), 1.0F), constantBlock(0));
    coeffs[0] = 16384;
    EXPECT_EQ(filtered(filter, constantBlock(1000), 1.0F), constantBlock(500));
}

TEST(Filter, KeepsTwoFiltersOfTheSameParametersApart) {
    Filter one(kHighPass600Hz), other(kHighPass600Hz);
    NoiseBlocks noise;
    filtered(one, noise.next(), 0.0F);
    EXPECT_EQ(filtered(other, constantBlock(0), 1.0F), constantBlock(0));
}

constexpr const char* kOddLengthText =
    "Check failed: filter_.num_coeffs_ & 1 == 1 (0 vs. 1) Filters must have an odd number of coefficients.";

TEST(Filter, RefusesFiftyFourCoefficients) {
    const Filter::FilterParams params{kHighPass600Hz.coeffs_, 54};
    EXPECT_FATAL_RECORD_ANY_LINE(Filter{params}, "check", "webrtc_common/se_wrapper", kOddLengthText);
}

TEST(Filter, GoesOnWithFiftyFourCoefficientsWhenTheCheckIsFilteredOut) {
    setLogThreshold("check", 0);
    const Filter::FilterParams params{kHighPass600Hz.coeffs_, 54};
    Filter filter(params);
    ReferenceFilter reference(coeffsOf(params));
    NoiseBlocks noise;
    for (const float gain : {1.0F, 0.5F, 0.0F, 0.0F}) {
        const Samples block = noise.next();
        EXPECT_EQ(filtered(filter, block, gain), reference.block(block, gain)) << gain;
    }
}

// The 55 newest samples, the gain of the previous block and the room behind the history come along.
TEST(Filter, ContinuesWhereItWasWhenItIsMoved) {
    const Samples ramp = [] {
        Samples block(kFilterBlock);
        std::iota(block.begin(), block.end(), int16_t{1000});
        return block;
    }();
    Filter unmoved(kHighPass600Hz), moved(kHighPass600Hz);
    filtered(unmoved, ramp, 0.25F);
    filtered(moved, ramp, 0.25F);
    Filter constructed(std::move(moved));
    EXPECT_EQ(filtered(constructed, ramp, 0.5F), filtered(unmoved, ramp, 0.5F));
    Filter assigned(kHighPass600Hz);
    assigned = std::move(constructed);
    EXPECT_EQ(filtered(assigned, ramp, 1.0F), filtered(unmoved, ramp, 1.0F));
}

TEST(Filter, WritesZerosAfterItWasMovedFromUntilItIsAssignedTo) {
    static_assert(std::is_nothrow_move_constructible_v<Filter> && std::is_nothrow_move_assignable_v<Filter>);
    Filter first(kHighPass600Hz);
    const Filter second(std::move(first));
    EXPECT_EQ(filtered(first, constantBlock(1000), 0.0F), constantBlock(0));
    first = Filter(kHighPass600Hz);
    filtered(first, constantBlock(1000), 1.0F);
    EXPECT_EQ(filtered(first, constantBlock(1000), 1.0F), constantBlock(-8));
}

}  // namespace
}  // namespace quill::test
