// printf-style formatting into a std::string of any length.
#pragma once

#include <cstdarg>
#include <string>

#include "common/export.h"

namespace quill {

// [any] fails: a format that the C library refuses gives an empty string; std::bad_alloc passes.
QUILL_COMMON_EXPORT std::string stringPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));

// [any] The same for an argument list. Afterwards the caller may only end the list with va_end.
QUILL_COMMON_EXPORT std::string stringVPrintf(const char* format, va_list arguments)
    __attribute__((format(printf, 1, 0)));

}  // namespace quill
