// The inverse transform against its reference, and the edge cases of its arithmetic.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/references/fft_hooks.h"
#include "tests/webrtc_common/dsp/dft_objects.h"

namespace quill::test {
namespace {

using media::se_wrapper::fwdFFT;
using media::se_wrapper::invFFT;

Samples filled(size_t count, const Filler& filler) {
    std::mt19937 random(11);
    Samples values(count);
    filler.fill(values.data(), values.size(), random);
    return values;
}

Samples inverse(DftObj_t* object, Samples in, int scale_factor_q10) {
    Samples out(in.size() - 2, 0x5a5a);
    invFFT(object, in.data(), 4, static_cast<uint16_t>(scale_factor_q10), out.data(), 0);
    return out;
}

Samples forward(DftObj_t* object, Samples in) {
    Samples out(in.size() + 2);
    fwdFFT(object, in.data(), 0, 1024, out.data(), static_cast<uint16_t>(out.size()));
    return out;
}

TEST(InvFFT, MatchesTheReferenceOnEveryKindOfSpectrumAndGain) {
    for (const int n : kDftSizes) {
        ReferenceFft reference(n, n);
        DftObj_t* const object = newDftObject(n);
        for (const Filler& filler : kFillers) {
            const Samples spectrum = filled(static_cast<size_t>(n) + 2, filler);
            for (const int gain : {0, 1, 3, 1000, 1024, 2048, 32768, 65535}) {
                EXPECT_EQ(inverse(object, spectrum, gain), reference.inverse(spectrum, gain))
                    << "n " << n << " gain " << gain << " " << filler.name;
            }
        }
    }
}

TEST(InvFFT, TakesTheLargestSizeAndOddOnes) {
    for (const int n : {1, 3, 15, 65535}) {
        const Samples spectrum = filled(static_cast<size_t>(n) + 2, kUniform);
        EXPECT_EQ(inverse(newDftObject(n), spectrum, 100), ReferenceFft(n, n).inverse(spectrum, 100)) << n;
    }
}

TEST(InvFFT, ReturnsTheNumberOfSamples) {
    Samples spectrum(322), out(320);
    for (const int data_length : {320, 160, 0, 400}) {
        DftObj_t* const object = newDftObject(320, data_length);
        EXPECT_EQ(invFFT(object, spectrum.data(), 4, 1024, out.data(), 7), 320) << data_length;
    }
}

TEST(InvFFT, IgnoresItsLastArgument) {
    Samples spectrum = filled(66, kUniform), first(64), second(64);
    invFFT(newDftObject(64), spectrum.data(), 4, 100, first.data(), 0);
    invFFT(newDftObject(64), spectrum.data(), 4, 100, second.data(), 65535);
    EXPECT_EQ(first, second);
}

TEST(InvFFT, IgnoresTheImaginaryPartsOfBothEnds) {
    DftObj_t* const object = newDftObject(64);
    Samples spectrum = filled(66, kUniform);
    const Samples expected = inverse(object, spectrum, 100);
    spectrum[1] = 12345;
    spectrum[65] = -12345;
    EXPECT_EQ(inverse(object, spectrum, 100), expected);
}

int largestDifference(const Samples& a, const Samples& b) {
    int largest = 0;
    for (size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

TEST(InvFFT, AtUnityReproducesAFullScaleInputToWithinTwoUnits) {
    for (const int n : {64, 160, 256, 512}) {
        DftObj_t* const object = newDftObject(n);
        for (int bin = 0; 2 * bin <= n; bin += 4) {
            Samples block(static_cast<size_t>(n));
            for (int i = 0; i < n; ++i) {
                const double angle = 6.283185307179586 * bin * i / n;
                block[static_cast<size_t>(i)] = static_cast<int16_t>(std::lround(32767 * std::cos(angle)));
            }
            const Samples result = inverse(object, forward(object, block), 1024);
            EXPECT_LE(largestDifference(result, block), 2) << "n " << n << " bin " << bin;
        }
    }
}

// Each bin loses up to one unit when it is truncated, so a block that fills all of them loses more.
TEST(InvFFT, AtUnityReproducesNoiseToWithinHalfAUnitEachValue) {
    for (const int n : {64, 160, 256, 512, 1024}) {
        DftObj_t* const object = newDftObject(n);
        const Samples block = filled(static_cast<size_t>(n), kUniform);
        EXPECT_LE(largestDifference(inverse(object, forward(object, block), 1024), block), n / 2) << n;
    }
}

// All values lose in the same direction.
TEST(InvFFT, AtUnityReproducesASingleSampleToWithinAUnitEachValue) {
    for (const int n : {64, 160, 256, 512, 1024}) {
        DftObj_t* const object = newDftObject(n);
        Samples block(static_cast<size_t>(n));
        block[0] = 32767;
        EXPECT_LE(largestDifference(inverse(object, forward(object, block), 1024), block), n + 1) << n;
    }
}

TEST(InvFFT, AtTwiceUnitySaturatesInsteadOfWrapping) {
    DftObj_t* const object = newDftObject(256);
    Samples block(256), expected(256);
    for (size_t i = 0; i < block.size(); ++i) {
        block[i] = i % 16 < 8 ? 32767 : -32768;
        expected[i] = block[i];
    }
    EXPECT_EQ(inverse(object, forward(object, block), 2048), expected);
}

// A DC of full scale at the highest gain: 2^32 in each sample, in the eight that are converted together and
// in the two after them.
TEST(InvFFT, WhatExceeds32BitsSaturatesWithItsSign) {
    Samples dc(12);
    dc[0] = 32767;
    EXPECT_EQ(inverse(newDftObject(10), dc, 65535), Samples(10, 32767));
    dc[0] = -32768;
    EXPECT_EQ(inverse(newDftObject(10), dc, 65535), Samples(10, -32768));
}

TEST(InvFFT, RoundsHalfAUnitUp) {
    DftObj_t* const object = newDftObject(16);
    Samples dc(18);
    dc[0] = 1;                                            // every sample 2 at unity
    EXPECT_EQ(inverse(object, dc, 256), Samples(16, 1));  // 0.5
    EXPECT_EQ(inverse(object, dc, 255), Samples(16, 0));
    dc[0] = -1;
    EXPECT_EQ(inverse(object, dc, 256), Samples(16, 0));  // -0.5
    EXPECT_EQ(inverse(object, dc, 258), Samples(16, -1));
}

}  // namespace
}  // namespace quill::test
