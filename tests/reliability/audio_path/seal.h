// A thread that may make no system call.
#pragma once

namespace reliability {

// From now on the kernel ends the process at any system call of this thread but its exit. fails: false when the kernel has
// no seccomp filter.
bool sealThisThread();

[[noreturn]] void endThisThread();

}  // namespace reliability
