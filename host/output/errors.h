// The errors of a program: it throws one of these, and main prints the text as one line.
// The text names the thing and says what to do about it; no full stop, no line break.
#pragma once

#include <stdexcept>

namespace se_output {

// The request of the user is invalid: exit code 2.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The request is valid, but a file or an engine is not: exit code 1.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace se_output
