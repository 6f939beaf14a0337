// The polyphase interpolation against its reference, and what it reads, writes and moves.
#include "webrtc_common/se_wrapper/dsp/interpolate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <type_traits>
#include <vector>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/dsp.h"
#include "tests/webrtc_common/dsp/kernel_spy.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::test {
namespace {

using media::se_wrapper::interp1ToNCore;
using Samples = std::vector<int16_t>;

static_assert(std::is_same_v<decltype(&interp1ToNCore), media::se_wrapper::Interp1toNCoreRoutine>);

Samples filled(size_t count, const Filler& filler, uint32_t seed) {
    std::mt19937 random(seed);
    Samples values(count);
    filler.fill(values.data(), values.size(), random);
    return values;
}

// Samples that the caller must own, counted from *signal.
size_t extent(int num_in, int num_taps) {
    return static_cast<size_t>(num_in + (num_taps + 7) / 8 * 8 + 7);
}

void expectReference(int num_in, int factor, int num_taps, const Filler& filler) {
    Samples signal = filled(extent(num_in, num_taps), filler, 1);
    Samples coeffs = filled(static_cast<size_t>(factor * num_taps), filler, 2);
    Samples out(static_cast<size_t>(num_in * factor) + 8, 0x5a5a);
    Samples expected = out;
    int16_t* reference_position = signal.data();
    referenceInterpolate(static_cast<uint16_t>(num_in), static_cast<uint16_t>(factor), &reference_position,
                         expected.data(), coeffs.data(), static_cast<uint16_t>(num_taps));
    int16_t* position = signal.data();
    interp1ToNCore(static_cast<uint16_t>(num_in), static_cast<uint16_t>(factor), &position, out.data(),
                   coeffs.data(), static_cast<uint16_t>(num_taps));
    EXPECT_EQ(out, expected) << num_in << " " << factor << " " << num_taps << " " << filler.name;
    EXPECT_EQ(position, signal.data() + num_in);
}

TEST(Interpolation, MatchesTheReference) {
    for (const int num_in : {1, 5, 7, 8, 9, 16, 80, 160}) {
        for (const int factor : {1, 2, 3, 6}) {
            for (const int num_taps : {1, 7, 8, 9, 24, 55}) {
                for (const Filler& filler : kFillers) expectReference(num_in, factor, num_taps, filler);
            }
        }
    }
}

TEST(Interpolation, TakesTheLongestPhases) {
    expectReference(8, 1, 65535, kUniform);
}

TEST(Interpolation, TakesTheLongestBlocks) {
    expectReference(65535, 2, 3, kUniform);
}

TEST(Interpolation, ByThreeOf80SamplesWrites240PhaseByPhaseAndMovesOnBy80) {
    Samples signal(extent(80, 8)), coeffs(24), out(241, 0x5a5a);
    for (size_t i = 0; i < signal.size(); ++i) signal[i] = static_cast<int16_t>(100 * i);
    coeffs[0] = 16384;      // phase 0: half the sample
    coeffs[8 + 1] = 16384;  // phase 1: half the next one
    coeffs[16] = -32768;    // phase 2: the sample negated
    int16_t* position = signal.data();
    interp1ToNCore(80, 3, &position, out.data(), coeffs.data(), 8);
    for (size_t j = 0; j < 80; ++j) {
        EXPECT_EQ(out[3 * j], 50 * static_cast<int>(j));
        EXPECT_EQ(out[3 * j + 1], 50 * static_cast<int>(j + 1));
        EXPECT_EQ(out[3 * j + 2], -100 * static_cast<int>(j));
    }
    EXPECT_EQ(out[240], 0x5a5a);
    EXPECT_EQ(position, signal.data() + 80);
}

TEST(Interpolation, CallsTheSelectedKernelOnceAPhaseWithZeroPaddedCoefficients) {
    const KernelSpy spy;
    Samples signal(extent(13, 5)), coeffs = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, out(26);
    int16_t* position = signal.data();
    interp1ToNCore(13, 2, &position, out.data(), coeffs.data(), 5);
    EXPECT_EQ(KernelSpy::calls, 2);
    EXPECT_EQ(KernelSpy::signal, signal.data());
    EXPECT_EQ(KernelSpy::num_out, 13);
    EXPECT_EQ(KernelSpy::coeff_values, (Samples{6, 7, 8, 9, 10, 0, 0, 0}));
}

TEST(Interpolation, ReadsAndWritesNoMoreThanStated) {
    for (const int num_in : {1, 7, 8, 9, 80}) {
        for (const int num_taps : {1, 8, 9, 55}) {
            const GuardedBuffer<int16_t> signal(extent(num_in, num_taps));
            const GuardedBuffer<int16_t> coeffs(static_cast<size_t>(3 * num_taps));
            const GuardedBuffer<int16_t> out(static_cast<size_t>(3 * num_in));
            int16_t* position = signal.data();
            interp1ToNCore(static_cast<uint16_t>(num_in), 3, &position, out.data(), coeffs.data(),
                           static_cast<uint16_t>(num_taps));
        }
    }
}

// The kernel would write a block even for no outputs, and the scratch has no room for it.
TEST(Interpolation, OfNoSamplesNeedsNoKernel) {
    const KernelSpy spy;
    Samples signal(64, 1), coeffs(8, 1), out(16);
    int16_t* position = signal.data();
    interp1ToNCore(0, 2, &position, out.data(), coeffs.data(), 4);
    EXPECT_EQ(KernelSpy::calls, 0);
}

TEST(Interpolation, OfNoSamplesWritesNothingAndLeavesThePointer) {
    Samples signal(64, 1), coeffs(8, 32767), out(16, 0x5a5a);
    int16_t* position = signal.data();
    interp1ToNCore(0, 2, &position, out.data(), coeffs.data(), 4);
    EXPECT_EQ(out, Samples(16, 0x5a5a));
    EXPECT_EQ(position, signal.data());
}

TEST(Interpolation, ByNoPhasesWritesNothingAndMovesOn) {
    Samples signal(64, 1), coeffs(8, 32767), out(16, 0x5a5a);
    int16_t* position = signal.data();
    interp1ToNCore(8, 0, &position, out.data(), coeffs.data(), 8);
    EXPECT_EQ(out, Samples(16, 0x5a5a));
    EXPECT_EQ(position, signal.data() + 8);
}

TEST(Interpolation, WithoutTapsWritesZerosAndReadsNothing) {
    const GuardedBuffer<int16_t> signal(5);
    Samples out(11, 0x5a5a);
    int16_t* position = signal.data();
    interp1ToNCore(5, 2, &position, out.data(), nullptr, 0);
    EXPECT_EQ(std::count(out.begin(), out.begin() + 10, 0), 10);
    EXPECT_EQ(out[10], 0x5a5a);
    EXPECT_EQ(position, signal.data() + 5);
}

}  // namespace
}  // namespace quill::test
