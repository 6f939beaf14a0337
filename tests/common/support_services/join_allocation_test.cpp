// A text is whole or not there: a stream that runs out of memory would give what it has so far.
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <new>
#include <vector>

#include "common/dynlib.h"

namespace {
int g_allocations_left = std::numeric_limits<int>::max();
}

// Inlined, the compiler would complain about pairs of different functions.
__attribute__((noinline)) void* operator new(size_t size) {
    if (g_allocations_left-- <= 0) throw std::bad_alloc();
    if (void* const block = std::malloc(size)) return block;
    throw std::bad_alloc();
}
__attribute__((noinline)) void operator delete(void* block) noexcept {
    std::free(block);
}
__attribute__((noinline)) void operator delete(void* block, size_t) noexcept {
    std::free(block);
}

namespace quill {
namespace {

// Empty: the allocation failed.
std::string joinedWith(int allocations, const std::vector<int>& values) {
    g_allocations_left = allocations;
    std::string text;
    try {
        text = join(values.begin(), values.end(), ", ");
    } catch (const std::bad_alloc&) {
    }
    g_allocations_left = std::numeric_limits<int>::max();
    return text;
}

TEST(JoinAllocation, WhatCannotBeAllocatedIsNotCutOff) {
    const std::vector<int> values(1000, 12345);
    const std::string whole = join(values.begin(), values.end(), ", ");
    int failures = 0;
    while (joinedWith(failures, values).empty()) ++failures;
    EXPECT_GT(failures, 3);
    for (int allocations = 0; allocations < failures + 3; ++allocations) {
        const std::string text = joinedWith(allocations, values);
        EXPECT_TRUE(text.empty() || text == whole) << "after " << allocations << " allocations";
    }
}

}  // namespace
}  // namespace quill
