// The FIR filter's exact sums in every build: results, and that nothing is read or written that a filter does not need.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/dsp.h"
#include "tests/webrtc_common/each_variant.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"

namespace quill::test {
namespace {

using media::se_wrapper::computeRFir;
using media::se_wrapper::g_pair_kernels;

class ExactFir : public EachVariant<media::se_wrapper::ConvolveVariant> {
  protected:
    void SetUp() override {
        EachVariant::SetUp();
        g_pair_kernels = &GetParam().pairs;
    }
    void TearDown() override { g_pair_kernels = former_; }

    // On buffers that end where the filter has to stop.
    static void expectReference(int taps, int num_out, int step, const Filler& samples,
                                const Filler& values) {
        std::mt19937 random(3);
        const GuardedBuffer<int16_t> signal(static_cast<size_t>((num_out - 1) * step + taps));
        const GuardedBuffer<int16_t> coeffs(static_cast<size_t>(taps)), out(static_cast<size_t>(num_out));
        std::vector<int16_t> expected(out.size());
        samples.fill(signal.data(), signal.size(), random);
        values.fill(coeffs.data(), coeffs.size(), random);
        const auto run = [&](auto* routine, int16_t* to) {
            routine(signal.data(), coeffs.data(), to, static_cast<uint16_t>(taps - 1),
                    static_cast<uint16_t>(num_out), static_cast<uint16_t>(step));
        };
        run(referenceRFir, expected.data());
        run(computeRFir, out.data());
        ASSERT_TRUE(std::equal(out.begin(), out.end(), expected.begin()))
            << taps << " taps, " << num_out << " outputs, step " << step << ", " << samples.name << " by "
            << values.name;
    }

  private:
    const media::se_wrapper::PairKernels* const former_ = g_pair_kernels;
};
INSTANTIATE_FOR_EACH_VARIANT(ExactFir, media::se_wrapper::kConvolveVariants);

TEST_P(ExactFir, MatchesTheReferenceForEveryNumberOfTaps) {
    for (int taps = 1; taps <= 70; ++taps) {
        for (const int step : {0, 1, 2, 3, 4, 5}) expectReference(taps, 23, step, kUniform, kUniform);
    }
}

TEST_P(ExactFir, MatchesTheReferenceForEveryNumberOfOutputs) {
    for (int num_out = 1; num_out <= 180; ++num_out) {
        for (const int step : {2, 3, 4, 7}) expectReference(19, num_out, step, kUniform, kUniform);
    }
}

// Long filters are added up from parts, with extremes on which 32 bits would overflow.
TEST_P(ExactFir, SumsLongFiltersOfExtremesExactly) {
    for (const int taps : {503, 504, 505, 506, 1008, 1009, 3000}) {
        for (const int step : {0, 1, 2, 3, 300}) {
            for (const Filler& samples : kFillers) {
                for (const Filler& values : kFillers) expectReference(taps, 17, step, samples, values);
            }
        }
    }
}

}  // namespace
}  // namespace quill::test
