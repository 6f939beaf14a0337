// A proof in a process of its own, which the kernel may end.
#pragma once

#include <functional>
#include <string>

namespace reliability {

// The exit code of `prove`, which runs in a child; 1, and a line about `engine`, when a signal ended it.
int proveInChild(const std::string& engine, const std::function<int()>& prove);

}  // namespace reliability
