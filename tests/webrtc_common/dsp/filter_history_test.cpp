// The FIR filter's history, and where it is stored. This program replaces the allocator: on request, a block
// ends at a page without access.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <optional>

#include "kernel_check/problem/guarded_buffer.h"
#include "tests/webrtc_common/dsp/kernel_spy.h"
#include "tests/webrtc_common/dsp/reference_filter.h"

namespace {

using quill::test::GuardedBytes;

int allocations = 0;
bool guard_the_next = false;
std::size_t guarded_size = 0;
alignas(GuardedBytes) unsigned char guarded_place[sizeof(GuardedBytes)];
GuardedBytes* guarded = nullptr;

}  // namespace

// Out of line: a compiler that sees malloc and delete meet takes them for a mismatch.
#define OUT_OF_LINE __attribute__((noinline))

OUT_OF_LINE void* operator new(std::size_t size) {
    ++allocations;
    if (guard_the_next) {
        guard_the_next = false;
        guarded_size = size;
        guarded = ::new (guarded_place) GuardedBytes(size, GuardedBytes::Edge::kEnd);
        return guarded->data();
    }
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
OUT_OF_LINE void operator delete(void* block) noexcept {
    if (guarded != nullptr && block == guarded->data()) {
        guarded->~GuardedBytes();
        guarded = nullptr;
    } else {
        std::free(block);
    }
}
void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

namespace quill::test {
namespace {

using media::se_wrapper::Filter;
using media::se_wrapper::kHighPass600Hz;
using Samples = std::vector<int16_t>;

size_t wholeEights(size_t taps) {
    return (taps + 7) / 8 * 8;
}

TEST(FilterHistory, IsTheTapsAndOneBlockLongWithTheNewestSampleLast) {
    const KernelSpy spy;
    Filter filter(kHighPass600Hz);
    NoiseBlocks noise;
    const Samples first = noise.next(), second = noise.next();

    filtered(filter, first, 1.0F);
    Samples expected(55);
    expected.insert(expected.end(), first.begin(), first.end());
    EXPECT_EQ(Samples(KernelSpy::signal, KernelSpy::signal + 55 + kFilterBlock), expected);

    filtered(filter, second, 1.0F);
    expected.assign(first.end() - 55, first.end());
    expected.insert(expected.end(), second.begin(), second.end());
    EXPECT_EQ(Samples(KernelSpy::signal, KernelSpy::signal + 55 + kFilterBlock), expected);
}

TEST(FilterHistory, GoesToTheCorrelationKernelWithTheTapsPaddedTo56) {
    const KernelSpy spy;
    Filter filter(kHighPass600Hz);
    filtered(filter, Samples(kFilterBlock), 1.0F);
    EXPECT_EQ(KernelSpy::calls, 1);
    EXPECT_EQ(KernelSpy::num_out, kFilterBlock);
    EXPECT_EQ(KernelSpy::num_taps, 56);
    Samples padded = coeffsOf(kHighPass600Hz);
    padded.push_back(0);
    EXPECT_EQ(KernelSpy::coeff_values, padded);
}

TEST(FilterHistory, IsKeptUpWhileBypassedWithoutTheKernel) {
    const KernelSpy spy;
    Filter filter(kHighPass600Hz);
    NoiseBlocks noise;
    filtered(filter, noise.next(), 0.0F);
    const Samples second = noise.next();
    const int calls = KernelSpy::calls;
    filtered(filter, second, 0.0F);
    EXPECT_EQ(KernelSpy::calls, calls);

    filtered(filter, noise.next(), 1.0F);
    EXPECT_EQ(Samples(KernelSpy::signal, KernelSpy::signal + 55), Samples(second.end() - 55, second.end()));
}

// The storage ends at a page without access: a read of one more sample ends the test.
TEST(FilterHistory, HasRoomAfterItForTheReadsOfTheKernelAndNoMore) {
    for (size_t taps = 1; taps <= 65; taps += 2) {
        const Samples coeffs(taps, 100);
        const Filter::FilterParams params{coeffs.data(), static_cast<int32_t>(taps)};
        guard_the_next = true;
        std::optional<Filter> filter(std::in_place, params);
        ASSERT_NE(guarded, nullptr);
        EXPECT_EQ(guarded_size, (kFilterBlock + wholeEights(taps)) * sizeof(int16_t)) << taps;
        for (const float gain : {1.0F, 0.5F, 0.0F, 0.0F, 1.0F})
            filtered(*filter, Samples(kFilterBlock), gain);
        filter.reset();
        EXPECT_EQ(guarded, nullptr) << taps;
    }
}

TEST(FilterHistory, IsTheOnlyAllocationAndMadeAtConstruction) {
    const int before = allocations;
    Filter filter(kHighPass600Hz);
    EXPECT_EQ(allocations, before + 1);
    Samples in(kFilterBlock, 1000), out(kFilterBlock);
    const int constructed = allocations;
    for (const float gain : {1.0F, 1.0F, 0.5F, 0.0F, 0.0F}) filter.filterBlock(in.data(), out.data(), gain);
    EXPECT_EQ(allocations, constructed);
}

}  // namespace
}  // namespace quill::test
