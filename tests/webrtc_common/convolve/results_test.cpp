// Every build computes what the reference computes, in every lane and at every alignment.
#include <gtest/gtest.h>

#include <vector>

#include "kernel_check/references/convolve.h"
#include "tests/webrtc_common/convolve/convolve_harness.h"
#include "tests/webrtc_common/convolve/each_build.h"

namespace quill::test {
namespace {

class ConvolveResults : public EachBuild {};
INSTANTIATE_FOR_EACH_BUILD(ConvolveResults);

TEST_P(ConvolveResults, NarrowedSumsEqualTheReferenceForAllLengthsAndContents) {
    EXPECT_EQ(firstDifference(i16_i16()), "");
}

TEST_P(ConvolveResults, ShiftedSumsEqualTheReferenceForAllLengthsAndContents) {
    EXPECT_EQ(firstDifference(i16_i32()), "");
}

// Each buffer at every offset from the end of its page.
template <class Kernel>
std::string firstDifferenceOverPlaces(Kernel* kernel, int num_out, int num_taps) {
    uint32_t seed = 0;
    for (int coeffs = 0; coeffs < 8; ++coeffs) {
        for (int signal = 0; signal < 8; ++signal) {
            for (int out = 0; out < 8; ++out) {
                const Numbers given = {{"num_out", num_out},      {"num_taps", num_taps},
                                       {"coeffs.at_end", 1},      {"signal.at_end", 1},
                                       {"out.at_end", 1},         {"coeffs.offset", coeffs},
                                       {"signal.offset", signal}, {"out.offset", out},
                                       {"coeffs.filler", 7},      {"signal.filler", 7}};
                if (std::string text = difference(kernel, ++seed, given); !text.empty()) return text;
            }
        }
    }
    return {};
}

TEST_P(ConvolveResults, NarrowedSumsDoNotDependOnAlignment) {
    EXPECT_EQ(firstDifferenceOverPlaces(i16_i16(), 160, 56), "");
}

TEST_P(ConvolveResults, ShiftedSumsDoNotDependOnAlignment) {
    EXPECT_EQ(firstDifferenceOverPlaces(i16_i32(), 56, 160), "");
}

TEST_P(ConvolveResults, EveryPairOfShiftsActsAsStated) {
    uint32_t seed = 0;
    for (int right = 0; right < 32; ++right) {
        for (int left = 0; left < 32; ++left) {
            const Numbers given = {{"shift_right", right}, {"shift_left", left}, {"num_out", 8},
                                   {"num_taps", 8},        {"coeffs.filler", 7}, {"signal.filler", 7}};
            ASSERT_EQ(difference(i16_i32(), ++seed, given), "");
        }
    }
}

TEST_P(ConvolveResults, CoefficientsAreNotReversed) {
    const int16_t coeffs[8] = {0, 0, 1, 0, 0, 0, 0, 0};
    const int16_t signal[16] = {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25};
    int32_t out[8] = {};
    i16_i32()(coeffs, signal, out, 0, 8, 8, 0);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(out[i], 12 + i);
}

TEST_P(ConvolveResults, NarrowedSumsMayReplaceTheirSignal) {
    std::mt19937 random(7);
    for (int num_out = 8; num_out <= 360; num_out += 8) {
        for (const int num_taps : {8, 16, 24, 32, 64, 136}) {
            std::vector<int16_t> coeffs(wholeEights(num_taps));
            std::vector<int16_t> signal(signalExtent(num_out, num_taps));
            kUniform.fill(coeffs.data(), coeffs.size(), random);
            kUniform.fill(signal.data(), signal.size(), random);
            std::vector<int16_t> expected = signal;
            referenceConvolve(coeffs.data(), signal.data(), expected.data(), num_out, num_taps);
            i16_i16()(coeffs.data(), signal.data(), signal.data(), num_out, num_taps);
            ASSERT_EQ(signal, expected) << num_out << " outputs, " << num_taps << " taps";
        }
    }
}

}  // namespace
}  // namespace quill::test
