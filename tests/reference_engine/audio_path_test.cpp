// The audio path allocates nothing: this file replaces all allocation functions of the process.
#include <atomic>
#include <cstdlib>
#include <new>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

std::atomic<long> g_allocations{0};

void* counted(size_t size) {
    ++g_allocations;
    void* memory = std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

}  // namespace

// Not inlined: a compiler that sees both halves takes malloc and delete for a mismatch.
[[gnu::noinline]] void* operator new(size_t size) {
    return counted(size);
}
[[gnu::noinline]] void* operator new[](size_t size) {
    return counted(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete[](void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete[](void* memory, size_t) noexcept {
    std::free(memory);
}

namespace {

class AudioPath : public testing::TestWithParam<Build> {
  protected:
    AudioPath() : engine(GetParam()) {}
    EngineUnderTest engine;
};
INSTANTIATE_FOR_EACH_BUILD(AudioPath);

}  // namespace

// The engine's allocations are counted: it allocates its tables when it is initialised.
TEST_P(AudioPath, IsPreparedWhenTheEngineIsInitialised) {
    const long before = g_allocations;
    engine.MMIfInit(0);
    EXPECT_GT(g_allocations, before);
}

TEST_P(AudioPath, AllocatesNothing) {
    engine.MMIfInit(0);
    engine.MMIfStartNoiseTest();
    Samples block = whiteNoise(7 * kBlock, -20, 1);
    Samples out(kBlock);
    const long before = g_allocations;
    for (int i = 0; i < 300; ++i) {
        engine.RcvIfProcessReceivePath(block.data(), out.data());
        engine.MMIfProcessMicrophones(block.data(), block.data() + kBlock, out.data());
    }
    EXPECT_EQ(g_allocations, before);
}
