// The FIR filter's results on every path against a reference, and its edge cases.
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <type_traits>
#include <vector>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/references/dsp.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::test {
namespace {

using media::se_wrapper::computeRFir;
using Samples = std::vector<int16_t>;

static_assert(std::is_same_v<decltype(&computeRFir), media::se_wrapper::ComputeRFirRoutine>);

struct Case {
    int order, num_out, step;
    size_t extent() const {  // whole eights of outputs and taps are enough for any path
        return static_cast<size_t>((num_out + 7) * std::max(1, step) + order + 8);
    }
};

using RFir = void(int16_t*, int16_t*, int16_t*, uint16_t, uint16_t, uint16_t);

Samples run(RFir* routine, const Case& c, Samples signal, Samples coeffs) {
    Samples out(static_cast<size_t>(c.num_out));
    routine(signal.data(), coeffs.data(), out.data(), static_cast<uint16_t>(c.order),
            static_cast<uint16_t>(c.num_out), static_cast<uint16_t>(c.step));
    return out;
}

Samples filter(const Case& c, const Samples& signal, const Samples& coeffs) {
    return run(computeRFir, c, signal, coeffs);
}

Samples reference(const Case& c, const Samples& signal, const Samples& coeffs) {
    return run(referenceRFir, c, signal, coeffs);
}

Samples filled(size_t count, const Filler& filler, uint32_t seed) {
    std::mt19937 random(seed);
    Samples values(count);
    filler.fill(values.data(), values.size(), random);
    return values;
}

void expectReference(const Case& c, const Samples& signal, const Samples& coeffs) {
    EXPECT_EQ(filter(c, signal, coeffs), reference(c, signal, coeffs))
        << "order " << c.order << " outputs " << c.num_out << " step " << c.step;
}

std::vector<Case> cases() {
    std::vector<Case> all;
    for (const int order : {0, 1, 6, 7, 8, 9, 15, 16, 17, 23, 54, 55, 63}) {
        for (const int num_out : {1, 7, 8, 9, 16, 17, 160}) {
            for (const int step : {0, 1, 2, 3}) all.push_back({order, num_out, step});
        }
    }
    return all;
}

TEST(ComputeRFir, MatchesTheReferenceOnEveryPathAndFiller) {
    for (const Case& c : cases()) {
        for (const Filler& filler : kFillers) {
            const Samples signal = filled(c.extent(), filler, 1);
            expectReference(c, signal, filled(static_cast<size_t>(c.order) + 1, filler, 2));
            expectReference(c, signal, filled(static_cast<size_t>(c.order) + 1, kUniform, 3));
        }
    }
}

// The paths skip leading and trailing zeros in different ways.
TEST(ComputeRFir, MatchesTheReferenceWithZerosAroundTheCoefficients) {
    for (const Case& c : cases()) {
        const Samples signal = filled(c.extent(), kUniform, 1);
        for (int front = 0; front <= c.order; front += 5) {
            for (int behind = 0; front + behind <= c.order; behind += 5) {
                Samples coeffs = filled(static_cast<size_t>(c.order) + 1, kUniform, 2);
                std::fill(coeffs.begin(), coeffs.begin() + front, int16_t{0});
                std::fill(coeffs.end() - behind, coeffs.end(), int16_t{0});
                expectReference(c, signal, coeffs);
            }
        }
    }
}

TEST(ComputeRFir, WithAllCoefficientsZeroWritesZerosOnEveryPath) {
    for (const Case& c : cases()) {
        const Samples coeffs(static_cast<size_t>(c.order) + 1);
        EXPECT_EQ(filter(c, filled(c.extent(), kUniform, 1), coeffs),
                  Samples(static_cast<size_t>(c.num_out)));
    }
}

TEST(ComputeRFir, Takes65536TapsOnEveryPath) {
    const Samples coeffs = filled(65536, kUniform, 2);
    for (const Case& c : {Case{65535, 8, 1}, Case{65535, 3, 1}, Case{65535, 2, 7}}) {
        expectReference(c, filled(c.extent(), kUniform, 1), coeffs);
    }
    const Case padded{65534, 8, 1};
    expectReference(padded, filled(padded.extent(), kUniform, 1), filled(65535, kUniform, 2));
}

TEST(ComputeRFir, TakesTheLongestSteps) {
    const Case c{2, 5, 65535};
    expectReference(c, filled(c.extent(), kUniform, 1), filled(3, kUniform, 2));
}

// Kept on purpose: the kernel's sums wrap, the direct ones do not.
TEST(ComputeRFir, SumsBeyond32BitsWrapInTheKernelAndSaturateDirectly) {
    const Samples signal(64, -32768), coeffs(8, -32768);
    EXPECT_EQ(filter({7, 8, 1}, signal, coeffs), Samples(8, 0));
    EXPECT_EQ(filter({7, 7, 1}, signal, coeffs), Samples(7, 32767));
    EXPECT_EQ(filter({7, 8, 2}, signal, coeffs), Samples(8, 32767));
}

TEST(ComputeRFir, DoesNotReverseTheCoefficients) {
    Samples signal(32);
    signal[2] = 16384;
    EXPECT_EQ(filter({2, 3, 1}, signal, {100, 200, 300}), (Samples{150, 100, 50}));
}

TEST(ComputeRFir, OfNoOutputsWritesNothing) {
    Samples signal(64, 1000), coeffs(8, 32767), out(8, 0x5a5a);
    for (const uint16_t step : {uint16_t{1}, uint16_t{2}}) {
        computeRFir(signal.data(), coeffs.data(), out.data(), 7, 0, step);
        computeRFir(signal.data(), coeffs.data(), out.data(), 5, 0, step);
        EXPECT_EQ(out, Samples(8, 0x5a5a));
    }
}

TEST(ComputeRFir, MayWriteOverItsSignal) {
    for (const Case& c : cases()) {
        if (c.step == 0) continue;  // every output needs the first samples then
        Samples signal = filled(c.extent(), kUniform, 1),
                coeffs = filled(static_cast<size_t>(c.order) + 1, kUniform, 2);
        const Samples expected = filter(c, signal, coeffs);
        computeRFir(signal.data(), coeffs.data(), signal.data(), static_cast<uint16_t>(c.order),
                    static_cast<uint16_t>(c.num_out), static_cast<uint16_t>(c.step));
        signal.resize(expected.size());
        EXPECT_EQ(signal, expected) << c.order << " " << c.num_out << " " << c.step;
    }
}

}  // namespace
}  // namespace quill::test
