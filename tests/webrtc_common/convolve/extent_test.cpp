// A kernel touches its stated extents and nothing else. Pages without access lie directly before and after
// each buffer, so an access to one more element ends the test.
#include <gtest/gtest.h>

#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/convolve.h"
#include "tests/webrtc_common/convolve/convolve_harness.h"
#include "tests/webrtc_common/convolve/each_build.h"

namespace quill::test {
namespace {

using Edge = GuardedBytes::Edge;

template <class Sample>
struct GuardedBuffers {
    GuardedBuffers(int num_out, int num_taps, Edge edge)
        : coeffs(wholeEights(num_taps), edge),
          signal(signalExtent(num_out, num_taps), edge),
          out(wholeEights(num_out), edge),
          expected(wholeEights(num_out), edge) {
        std::mt19937 random(static_cast<uint32_t>(1000 * num_out + num_taps));
        kUniform.fill(coeffs.data(), coeffs.size(), random);
        kUniform.fill(signal.data(), signal.size(), random);
    }
    GuardedBuffer<int16_t> coeffs;
    GuardedBuffer<int16_t> signal;
    GuardedBuffer<Sample> out;
    GuardedBuffer<Sample> expected;
};

class ConvolveExtent : public EachBuild {
  protected:
    void checkNarrowed(Edge edge) const {
        for (const int num_out : kLengths) {
            for (const int num_taps : kLengths) {
                const GuardedBuffers<int16_t> b(num_out, num_taps, edge);
                referenceConvolve(b.coeffs.data(), b.signal.data(), b.expected.data(), num_out, num_taps);
                i16_i16()(b.coeffs.data(), b.signal.data(), b.out.data(), num_out, num_taps);
                ASSERT_TRUE(std::equal(b.out.begin(), b.out.end(), b.expected.begin()));
            }
        }
    }
    void checkShifted(Edge edge) const {
        for (const int num_out : kLengths) {
            for (const int num_taps : kLengths) {
                const GuardedBuffers<int32_t> b(num_out, num_taps, edge);
                referenceConvolve(b.coeffs.data(), b.signal.data(), b.expected.data(), 3, num_out, num_taps,
                                  1);
                i16_i32()(b.coeffs.data(), b.signal.data(), b.out.data(), 3, num_out, num_taps, 1);
                ASSERT_TRUE(std::equal(b.out.begin(), b.out.end(), b.expected.begin()));
            }
        }
    }
};
INSTANTIATE_FOR_EACH_BUILD(ConvolveExtent);

TEST_P(ConvolveExtent, NarrowedSumsTouchNothingAfterTheirBuffers) {
    checkNarrowed(Edge::kEnd);
}

TEST_P(ConvolveExtent, NarrowedSumsTouchNothingBeforeTheirBuffers) {
    checkNarrowed(Edge::kBegin);
}

TEST_P(ConvolveExtent, ShiftedSumsTouchNothingAfterTheirBuffers) {
    checkShifted(Edge::kEnd);
}

TEST_P(ConvolveExtent, ShiftedSumsTouchNothingBeforeTheirBuffers) {
    checkShifted(Edge::kBegin);
}

}  // namespace
}  // namespace quill::test
