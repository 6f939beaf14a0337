// Counts the heap blocks that the process allocates and releases.
#pragma once

#include <cstddef>

namespace quill::test {

// Allocations of this thread so far, by operator new, malloc and related functions, in any library.
size_t allocationCount();

// Blocks that this thread has released so far.
size_t releaseCount();

// The allocations that the work makes.
template <class Work>
size_t allocationsOf(const Work& work) {
    const size_t before = allocationCount();
    work();
    return allocationCount() - before;
}

// The blocks that the work releases.
template <class Work>
size_t releasesOf(const Work& work) {
    const size_t before = releaseCount();
    work();
    return releaseCount() - before;
}

}  // namespace quill::test
