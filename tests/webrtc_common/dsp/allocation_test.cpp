// Only the set-up allocates, and what happens when it fails. This program replaces the allocator: it counts,
// and fails on request.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <vector>

#include "tests/webrtc_common/dsp/dft_objects.h"
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"
#include "webrtc_common/se_wrapper/dsp/interpolate.h"
#include "webrtc_common/se_wrapper/dsp/simple_fft.h"

namespace {
int allocations = 0;
int blocks_alive = 0;
int allocations_left = -1;  // none fails while this is negative

constexpr int kAllocationsOfAContext = 4;  // itself and three arrays

// The latest blocks, as many as a context allocates.
struct Block {
    std::uintptr_t address;
    std::size_t size;
};
Block made[kAllocationsOfAContext];
std::uintptr_t released[kAllocationsOfAContext];

template <class T>
void append(T (&latest)[kAllocationsOfAContext], T value) {
    for (int i = 0; i + 1 < kAllocationsOfAContext; ++i) latest[i] = latest[i + 1];
    latest[kAllocationsOfAContext - 1] = value;
}

std::uintptr_t addressOf(const void* block) {
    return reinterpret_cast<std::uintptr_t>(block);
}
}  // namespace

// Out of line: a compiler that sees malloc and delete meet takes them for a mismatch.
#define OUT_OF_LINE __attribute__((noinline))

OUT_OF_LINE void* operator new(std::size_t size) {
    if (allocations_left == 0) throw std::bad_alloc();
    if (allocations_left > 0) --allocations_left;
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) throw std::bad_alloc();
    ++allocations;
    ++blocks_alive;
    append(made, {addressOf(block), size});
    return block;
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
OUT_OF_LINE void operator delete(void* block) noexcept {
    if (block != nullptr) {
        --blocks_alive;
        append(released, addressOf(block));
    }
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}
void operator delete[](void* block) noexcept {
    operator delete(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}

namespace quill::media::se_wrapper {
namespace {

TEST(DspAllocation, EachFailureOfASetUpPassesAndLeavesNothingBehind) {
    g_fft_contexts.reserve(g_fft_contexts.size() + 1);
    for (int successes = 0; successes < kAllocationsOfAContext; ++successes) {
        DftObj_t object{&object};
        const size_t contexts = g_fft_contexts.size();
        const int alive = blocks_alive;
        bool failed = false;
        allocations_left = successes;
        try {
            initFFT(&object, 64, 64);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        allocations_left = -1;
        EXPECT_TRUE(failed) << successes;
        EXPECT_EQ(blocks_alive, alive) << successes;
        EXPECT_EQ(g_fft_contexts.size(), contexts) << successes;
        EXPECT_EQ(object.context, &object) << successes;
    }
}

TEST(DspAllocation, AListThatCannotGrowFailsTheSetUpToo) {
    g_fft_contexts.shrink_to_fit();
    DftObj_t object{nullptr};
    const int alive = blocks_alive;
    allocations_left = kAllocationsOfAContext;
    EXPECT_THROW(initFFT(&object, 64, 64), std::bad_alloc);
    allocations_left = -1;
    EXPECT_EQ(blocks_alive, alive);
    EXPECT_EQ(object.context, nullptr);
}

TEST(DspAllocation, ASetUpTakesAContextItsTwiddlesItsScratchAndItsFactors) {
    g_fft_contexts.reserve(g_fft_contexts.size() + 2);
    DftObj_t* const object = test::newDftObject(8);
    test::keptObject(object->context);
    const int before = allocations;
    initFFT(object, 64, 64);
    EXPECT_EQ(allocations, before + kAllocationsOfAContext);
    EXPECT_EQ(made[0].size, sizeof(FFTContext));
    EXPECT_EQ(made[1].size, (2 * 64 + 15) * sizeof(float));
    EXPECT_EQ(made[2].size, 64 * sizeof(float));
    EXPECT_EQ(made[3].size, 20 * sizeof(int));
}

TEST(DspAllocation, AContextReleasesWhatItTookInReverse) {
    delete new FFTContext(64, 64);
    const std::uintptr_t last_first[] = {made[3].address, made[2].address, made[1].address, made[0].address};
    for (int i = 0; i < kAllocationsOfAContext; ++i) EXPECT_EQ(released[i], last_first[i]) << i;
}

TEST(DspAllocation, TheSpectrumReleasesItsTables) {
    const std::vector<int16_t> samples(64, 100);
    std::vector<float> spectrum(32);
    const int alive = blocks_alive;
    simpleFFT(samples.data(), 64, &spectrum);
    EXPECT_EQ(blocks_alive, alive);
}

TEST(DspAllocation, ASpectrumThatCannotGrowReleasesThemToo) {
    const std::vector<int16_t> samples(64, 100);
    std::vector<float> spectrum;
    const int alive = blocks_alive;
    allocations_left = kAllocationsOfAContext - 1;  // the context itself is on the stack
    EXPECT_THROW(simpleFFT(samples.data(), 64, &spectrum), std::bad_alloc);
    allocations_left = -1;
    EXPECT_EQ(blocks_alive, alive);
    EXPECT_TRUE(spectrum.empty());
}

TEST(DspAllocation, NoRoutineOfTheAudioPathAllocates) {
    DftObj_t* const object = test::newDftObject(256);
    std::vector<int16_t> a(1024, 100), b(1024, -100), out(1024);
    int16_t* signal = a.data();
    const int before = allocations;
    fwdFFT(object, a.data(), 2, 1024, out.data(), 258);
    invFFT(object, out.data(), 4, 1024, b.data(), 0);
    vcmul_i16(a.data(), b.data(), out.data(), 129);
    interp1ToNCore(80, 3, &signal, out.data(), b.data(), 55);
    for (const uint16_t taps : {uint16_t{54}, uint16_t{55}}) {
        computeRFir(a.data(), b.data(), out.data(), taps, 160, 1);
        computeRFir(a.data(), b.data(), out.data(), taps, 160, 2);
    }
    EXPECT_EQ(allocations, before);
}

}  // namespace
}  // namespace quill::media::se_wrapper
