// Counts what this thread calls of the C library's allocator and locks, in any library of the process.
#pragma once

#include <cstdint>

namespace reliability {

struct Calls {
    uint64_t allocations;  // malloc and its kin; operator new is one of its callers
    uint64_t releases;
    uint64_t locks;  // mutexes, read-write and spin locks, condition variables, semaphores
};

Calls callsOfThisThread();

}  // namespace reliability
