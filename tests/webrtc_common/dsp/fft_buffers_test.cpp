// Which samples the FFT hooks touch: pages without access after or before every buffer, every alignment, and
// one buffer for both sides.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"
#include "kernel_check/references/fft_hooks.h"
#include "tests/webrtc_common/dsp/dft_objects.h"

namespace quill::test {
namespace {

using media::se_wrapper::fwdFFT;
using media::se_wrapper::invFFT;
using Edge = GuardedBytes::Edge;

Samples uniform(size_t count) {
    std::mt19937 random(static_cast<uint32_t>(count));
    Samples values(count);
    kUniform.fill(values.data(), count, random);
    return values;
}

// Both transforms of n samples in and out at given places; results compared with the reference.
void expectForward(int n, int16_t* in, int16_t* out) {
    const auto count = static_cast<size_t>(n);
    Samples block = uniform(count);
    std::copy(block.begin(), block.end(), in);
    fwdFFT(newDftObject(n), in, 0, 1024, out, static_cast<uint16_t>(n + 2));
    EXPECT_EQ(Samples(out, out + n + 2), ReferenceFft(n, n).forward(block, 0)) << n;
}
void expectInverse(int n, int16_t* in, int16_t* out) {
    const Samples spectrum = uniform(static_cast<size_t>(n) + 2);
    std::copy(spectrum.begin(), spectrum.end() - 1, in);  // the last value is never read
    invFFT(newDftObject(n), in, 4, 100, out, 0);
    EXPECT_EQ(Samples(out, out + n), ReferenceFft(n, n).inverse(spectrum, 100)) << n;
}

TEST(FftBuffers, ForwardReadsNAndWritesNPlusTwo) {
    for (const int n : kDftSizes) {
        for (const Edge edge : {Edge::kBegin, Edge::kEnd}) {
            const GuardedBuffer<int16_t> in(static_cast<size_t>(n), edge);
            const GuardedBuffer<int16_t> out(static_cast<size_t>(n) + 2, edge);
            expectForward(n, in.data(), out.data());
        }
    }
}

TEST(FftBuffers, InverseReadsNPlusOneAndWritesN) {
    for (const int n : kDftSizes) {
        for (const Edge edge : {Edge::kBegin, Edge::kEnd}) {
            const GuardedBuffer<int16_t> in(static_cast<size_t>(n) + 1, edge);
            const GuardedBuffer<int16_t> out(static_cast<size_t>(n), edge);
            expectInverse(n, in.data(), out.data());
        }
    }
}

TEST(FftBuffers, MayHaveAnyAlignment) {
    Samples in(320), out(320);
    for (size_t a = 0; a < 8; ++a) {
        for (size_t b = 0; b < 8; ++b) {
            expectForward(256, in.data() + a, out.data() + b);
            expectInverse(256, in.data() + a, out.data() + b);
        }
    }
}

TEST(FftBuffers, MayBeOneBufferForBothSides) {
    for (const int n : kDftSizes) {
        Samples buffer(static_cast<size_t>(n) + 2);
        expectForward(n, buffer.data(), buffer.data());
        expectInverse(n, buffer.data(), buffer.data());
    }
}

TEST(FftBuffers, MayOverlapInAnyWay) {
    Samples buffer(300);
    for (size_t shift = 1; shift <= 20; ++shift) {
        expectForward(60, buffer.data(), buffer.data() + shift);
        expectForward(60, buffer.data() + shift, buffer.data());
        expectInverse(60, buffer.data(), buffer.data() + shift);
        expectInverse(60, buffer.data() + shift, buffer.data());
    }
}

TEST(FftBuffers, OfDifferentObjectsDoNotInterfere) {
    DftObj_t* const first = newDftObject(64);
    DftObj_t* const second = newDftObject(64);
    Samples a = uniform(64), b(64), spectrum(66), other(66);
    fwdFFT(first, a.data(), 0, 1024, spectrum.data(), 66);
    fwdFFT(second, b.data(), 0, 1024, other.data(), 66);
    EXPECT_EQ(other, Samples(66));
    EXPECT_EQ(spectrum, ReferenceFft(64, 64).forward(a, 0));
}

TEST(FftBuffers, OfDifferentObjectsMayBeInUseOnTwoThreadsAtOnce) {
    Samples a = uniform(256), mine(258), other(258);
    const Samples expected = ReferenceFft(256, 256).forward(a, 0);
    DftObj_t* const first = newDftObject(256);
    DftObj_t* const second = newDftObject(256);
    std::thread thread([&] { fwdFFT(second, a.data(), 0, 1024, other.data(), 258); });
    fwdFFT(first, a.data(), 0, 1024, mine.data(), 258);
    thread.join();
    EXPECT_EQ(mine, expected);
    EXPECT_EQ(other, expected);
}

}  // namespace
}  // namespace quill::test
