#include "common/string_printf.h"

#include <cstdio>

namespace quill {

std::string stringVPrintf(const char* format, va_list arguments) {
    va_list measured;
    va_copy(measured, arguments);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_copy has just set it
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) return {};
    std::string text(static_cast<size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

std::string stringPrintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = stringVPrintf(format, arguments);
    va_end(arguments);
    return text;
}

}  // namespace quill
