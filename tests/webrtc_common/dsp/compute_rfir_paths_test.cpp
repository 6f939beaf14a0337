// Which path the FIR filter takes, what it passes to the kernel, and which samples it reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "kernel_check/problem/guarded_buffer.h"
#include "tests/webrtc_common/dsp/kernel_spy.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"

namespace quill::test {
namespace {

using media::se_wrapper::computeRFir;
using Samples = std::vector<int16_t>;

class ComputeRFirPaths : public ::testing::Test {
  protected:
    // taps coefficients 1, 2, 3, ..., the first `zeros` of them zero.
    void run(int taps, int zeros, int num_out, int step) {
        coeffs_.resize(static_cast<size_t>(taps));
        for (size_t k = 0; k < coeffs_.size(); ++k) {
            coeffs_[k] = k < static_cast<size_t>(zeros) ? int16_t{0} : static_cast<int16_t>(k + 1);
        }
        computeRFir(signal_.data(), coeffs_.data(), out_.data(), static_cast<uint16_t>(taps - 1),
                    static_cast<uint16_t>(num_out), static_cast<uint16_t>(step));
    }

    const KernelSpy spy_;
    Samples signal_ = Samples(512), coeffs_, out_ = Samples(160, 0x5a5a);
};

TEST_F(ComputeRFirPaths, WholeEightsGoToTheKernelAsTheyAre) {
    run(24, 0, 16, 1);
    EXPECT_EQ(KernelSpy::calls, 1);
    EXPECT_EQ(KernelSpy::coeffs, coeffs_.data());
    EXPECT_EQ(KernelSpy::signal, signal_.data());
    EXPECT_EQ(KernelSpy::out, out_.data());
    EXPECT_EQ(KernelSpy::num_out, 16);
    EXPECT_EQ(KernelSpy::num_taps, 24);
}

TEST_F(ComputeRFirPaths, WholeEightsOfLeadingZerosAreSkipped) {
    run(24, 13, 16, 1);
    EXPECT_EQ(KernelSpy::coeffs, coeffs_.data() + 8);
    EXPECT_EQ(KernelSpy::signal, signal_.data() + 8);
    EXPECT_EQ(KernelSpy::num_taps, 16);
}

TEST_F(ComputeRFirPaths, WholeEightsOfNothingButZerosNeedNoKernel) {
    run(24, 24, 16, 1);
    EXPECT_EQ(KernelSpy::calls, 0);
    for (size_t i = 0; i < 16; ++i) EXPECT_EQ(out_[i], 0);
    EXPECT_EQ(out_[16], 0x5a5a);
}

TEST_F(ComputeRFirPaths, OtherNumbersOfTapsArePaddedWithZeros) {
    run(5, 2, 16, 1);
    EXPECT_EQ(KernelSpy::calls, 1);
    EXPECT_EQ(KernelSpy::signal, signal_.data());
    EXPECT_EQ(KernelSpy::num_out, 16);
    EXPECT_EQ(KernelSpy::coeff_values, (Samples{0, 0, 3, 4, 5, 0, 0, 0}));
}

TEST_F(ComputeRFirPaths, ADecimatingFilterNeedsNoKernel) {
    run(24, 0, 160, 2);
    EXPECT_EQ(KernelSpy::calls, 0);
}

TEST_F(ComputeRFirPaths, AnotherNumberOfOutputsNeedsNoKernel) {
    for (const int num_out : {1, 4, 12, 15, 20}) run(24, 0, num_out, 1);
    EXPECT_EQ(KernelSpy::calls, 0);
}

void runGuarded(size_t extent, int taps, int num_out, int step) {
    const GuardedBuffer<int16_t> signal(extent), coeffs(static_cast<size_t>(taps)),
        out(static_cast<size_t>(num_out));
    computeRFir(signal.data(), coeffs.data(), out.data(), static_cast<uint16_t>(taps - 1),
                static_cast<uint16_t>(num_out), static_cast<uint16_t>(step));
}

TEST(ComputeRFirExtent, AStepOfTwoReadsNoMoreThanTheLastSpan) {
    for (const int order : {0, 7, 8, 54, 55}) {
        runGuarded(static_cast<size_t>(2 * 159 + order + 1), order + 1, 160, 2);
    }
}

TEST(ComputeRFirExtent, TheDirectPathReadsNoMoreThanTheLastSpan) {
    for (const int taps : {1, 7, 8, 9, 16, 55}) {
        for (const int num_out : {1, 2, 4, 7, 9, 12, 20, 159}) {
            for (const int step : {1, 3}) {
                runGuarded(static_cast<size_t>((num_out - 1) * step + taps), taps, num_out, step);
            }
        }
    }
}

// The samples of 9 outputs 3 apart, without those of the 10 leading and 20 trailing zeros.
TEST(ComputeRFirExtent, TheDirectPathSkipsTheZerosAroundTheCoefficients) {
    const GuardedBuffer<int16_t> from_first(8 * 3 + 25, GuardedBytes::Edge::kBegin);
    const GuardedBuffer<int16_t> to_last(8 * 3 + 10 + 25);
    Samples coeffs(10 + 25 + 20), out(9);
    std::fill_n(coeffs.begin() + 10, 25, int16_t{1000});
    computeRFir(from_first.data() - 10, coeffs.data(), out.data(), 54, 9, 3);
    computeRFir(to_last.data(), coeffs.data(), out.data(), 54, 9, 3);
}

TEST(ComputeRFirExtent, TheKernelReadsWholeEights) {
    for (const int taps : {1, 7, 8, 9, 16, 55}) {
        for (const int num_out : {8, 16, 160}) {
            runGuarded(static_cast<size_t>(num_out + (taps + 7) / 8 * 8), taps, num_out, 1);
        }
    }
}

}  // namespace
}  // namespace quill::test
