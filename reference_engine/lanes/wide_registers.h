// FOR_WIDE_REGISTERS: a function whose loops the compiler builds twice, for every x86-64 processor and for those with AVX2, of
// which the loader chooses. Both give the same bits, as neither contracts nor reorders operations.
#pragma once

// Gcc's callers need not know that there are two. Sanitizers start later than the choice is made.
#if defined(__clang__) || defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define FOR_WIDE_REGISTERS
#else
#define FOR_WIDE_REGISTERS __attribute__((target_clones("avx2", "default")))
#endif
