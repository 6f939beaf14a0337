// Pages without access around every array: nothing is read or written beyond what the caller owns.
#include <gtest/gtest.h>

#include <algorithm>

#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/transforms.h"
#include "webrtc_common/fftpack/fftpack.h"

namespace quill::test {
namespace {

using Setup = void (*)(int, float*, int*);
using Transform = void (*)(int, float*, float*, int*);

void runGuarded(int n, size_t work, GuardedBytes::Edge edge, Setup setup, Transform forward,
                Transform backward) {
    const GuardedBuffer<float> data(static_cast<size_t>(n), edge);
    const GuardedBuffer<float> wsave(work, edge);
    const GuardedBuffer<int> ifac(20, edge);
    std::fill(data.begin(), data.end(), 1.0f);
    setup(n, wsave.data(), ifac.data());
    forward(n, data.data(), wsave.data(), ifac.data());
    backward(n, data.data(), wsave.data(), ifac.data());
}

TEST(FftpackExtent, RealFftStaysWithinItsArrays) {
    for (const int n : smallLengths()) {
        for (const auto edge : {GuardedBytes::Edge::kBegin, GuardedBytes::Edge::kEnd}) {
            runGuarded(n, 2 * static_cast<size_t>(n) + 15, edge, __ogg_fdrffti, __ogg_fdrfftf, __ogg_fdrfftb);
        }
    }
}

TEST(FftpackExtent, CosineTransformNeedsNoMoreThanThreeN) {
    for (const int n : smallLengths()) {
        for (const auto edge : {GuardedBytes::Edge::kBegin, GuardedBytes::Edge::kEnd}) {
            runGuarded(n, 3 * static_cast<size_t>(n), edge, __ogg_fdcosqi, __ogg_fdcosqf, __ogg_fdcosqb);
        }
    }
}

TEST(FftpackExtent, TransformsLeaveTheTablesAsTheyAre) {
    for (const int n : {8, 60, 63, 97, 256}) {
        RealFft fft(n);
        const Floats before(fft.wsave.begin() + n, fft.wsave.end());
        const auto factors = fft.ifac;
        fft.backward(fft.forward(noise(n)));
        EXPECT_EQ(Floats(fft.wsave.begin() + n, fft.wsave.end()), before) << n;
        EXPECT_EQ(fft.ifac, factors) << n;
    }
}

}  // namespace
}  // namespace quill::test
