// Runs a call and returns when it accesses memory without permission.
// Threads: one; the signal handler is the process's. The call must own nothing that a destructor releases,
// since it is left by a jump.
#pragma once

#include <cstdint>
#include <optional>

namespace quill::test {

struct Fault {
    uintptr_t address;
    bool write;
};

// The fault that ended `call(argument)`; nothing when it returned.
std::optional<Fault> trapFault(void (*call)(const void*), const void* argument);

}  // namespace quill::test
