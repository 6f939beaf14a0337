#include "common/string_printf.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <new>

namespace quill {

std::string stringVPrintf(const char* format, va_list arguments) {
    errno = 0;
    va_list measured;
    va_copy(measured, arguments);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_copy has just set it
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    std::string text(static_cast<size_t>(std::max(length, 0)), '\0');
    if (length >= 0 && std::vsnprintf(text.data(), text.size() + 1, format, arguments) == length) return text;
    if (errno == ENOMEM) throw std::bad_alloc();
    return {};
}

std::string stringPrintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = stringVPrintf(format, arguments);
    va_end(arguments);
    return text;
}

}  // namespace quill
