// Soft assertions: a failed one is reported and may stop in a debugger; then execution continues.
#pragma once

#include <functional>
#include <string>

#include "common/export.h"
#include "common/record_sites.h"

namespace quill {

struct AssertionRecord {
    const char* file;
    int line;
    const char* function;
    std::string text;
};

// Returns true when the caller is to stop in a debugger.
using AssertionHandler = std::function<bool(const AssertionRecord&)>;

// [any] Replaces the handler. An empty one restores the default: one level-2 record with tag "assert" and the
// assertion's file, line, function and text; true only while a debugger is attached.
QUILL_COMMON_EXPORT void setAssertionHandler(AssertionHandler handler);

// [any] Reports a failed assertion; `format` begins with "Assertion failed: ".
QUILL_COMMON_EXPORT bool handleAssertion(const char* file, int line, const char* function, const char* format,
                                         ...) __attribute__((format(printf, 4, 5)));

}  // namespace quill

// The debugger that resumes the process may have changed memory.
#define QUILL_BREAKPOINT_TRAP() __asm__ volatile("int3" ::: "memory")

// Reports an assertion that has failed: QUILL_ASSERTION_FAILED(site, format, arguments...).
#define QUILL_ASSERTION_FAILED(site, ...)                                                           \
    do {                                                                                            \
        if (::quill::handleAssertion((site).source, (site).line, __PRETTY_FUNCTION__, __VA_ARGS__)) \
            QUILL_BREAKPOINT_TRAP();                                                                \
    } while (false)
