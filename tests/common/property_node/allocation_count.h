// Counts what the process takes from the heap and gives back.
#pragma once

#include <cstddef>

namespace quill::test {

// Allocations of this thread so far, by operator new, malloc and their kin, in any library.
size_t allocationCount();

// Blocks that this thread has given back so far.
size_t releaseCount();

// The allocations that the work makes.
template <class Work>
size_t allocationsOf(const Work& work) {
    const size_t before = allocationCount();
    work();
    return allocationCount() - before;
}

// The blocks that the work gives back.
template <class Work>
size_t releasesOf(const Work& work) {
    const size_t before = releaseCount();
    work();
    return releaseCount() - before;
}

}  // namespace quill::test
