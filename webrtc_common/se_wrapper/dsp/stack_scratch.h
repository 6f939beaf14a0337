// Scratch on the stack of the calling function, sized at run time, for kernels that must not allocate.
#pragma once

#include <cstddef>

// `count` elements of uninitialised, 16-byte aligned memory that lives until the calling function returns. A
// macro, since a function would give back its own frame.
// needs: not inside a loop.
#define SE_WRAPPER_STACK_ARRAY(type, count) \
    static_cast<type*>(__builtin_alloca(static_cast<std::size_t>(count) * sizeof(type)))

namespace quill::media::se_wrapper {

constexpr int roundedUpToEight(int count) {
    return (count + 7) / 8 * 8;
}

}  // namespace quill::media::se_wrapper
