// Every multiple of eight outputs and taps up to more than one group of the widest build. Each mixture of
// wide groups, narrow groups, paired and single steps gives the reference's bits, with every buffer at its
// page's end.
#include <gtest/gtest.h>

#include "tests/webrtc_common/convolve/convolve_harness.h"
#include "tests/webrtc_common/convolve/each_build.h"

namespace quill::test {
namespace {

constexpr int kMostOutputs = 8 * 44;
constexpr int kMostTaps = 8 * 35;

template <class Kernel>
std::string firstDifferenceOverEights(Kernel* kernel, int fixed_taps, int fixed_outputs) {
    uint32_t seed = 0;
    const auto differs = [&](int num_out, int num_taps) {
        const Numbers given = {{"num_out", num_out}, {"num_taps", num_taps}, {"coeffs.at_end", 1},
                               {"signal.at_end", 1}, {"out.at_end", 1},      {"coeffs.offset", 0},
                               {"signal.offset", 0}, {"out.offset", 0},      {"coeffs.filler", 7},
                               {"signal.filler", 7}};
        return difference(kernel, ++seed, given);
    };
    for (int num_out = 8; num_out <= kMostOutputs; num_out += 8) {
        if (std::string text = differs(num_out, fixed_taps); !text.empty()) return text;
    }
    for (int num_taps = 8; num_taps <= kMostTaps; num_taps += 8) {
        if (std::string text = differs(fixed_outputs, num_taps); !text.empty()) return text;
    }
    return {};
}

class ConvolveGroups : public EachBuild {};
INSTANTIATE_FOR_EACH_BUILD(ConvolveGroups);

TEST_P(ConvolveGroups, NarrowedSumsEqualTheReferenceForEveryNumberOfEights) {
    EXPECT_EQ(firstDifferenceOverEights(i16_i16(), 56, 160), "");
    EXPECT_EQ(firstDifferenceOverEights(i16_i16(), 136, 184), "");
}

TEST_P(ConvolveGroups, ShiftedSumsEqualTheReferenceForEveryNumberOfEights) {
    EXPECT_EQ(firstDifferenceOverEights(i16_i32(), 56, 160), "");
    EXPECT_EQ(firstDifferenceOverEights(i16_i32(), 136, 184), "");
}

}  // namespace
}  // namespace quill::test
