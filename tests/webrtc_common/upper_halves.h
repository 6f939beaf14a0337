// Whether the upper halves of the AVX registers are in use.
#pragma once

#include <algorithm>

namespace quill::test {

// Whether all sixteen are zero. needs: a processor with AVX; a program that does not use them by itself.
inline bool upperHalvesAreZero() {
    unsigned char halves[16][16];
    __asm__ volatile(
        ".irp n, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15\n\t"
        "vextractf128 $1, %%ymm\\n, 16 * \\n(%0)\n\t"
        ".endr"
        :
        : "r"(&halves[0][0])
        : "memory");
    return std::all_of(&halves[0][0], &halves[0][0] + sizeof halves,
                       [](unsigned char byte) { return byte == 0; });
}

}  // namespace quill::test
