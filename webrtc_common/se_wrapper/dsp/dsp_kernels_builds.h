// The routines that each source file of them exports to the list of builds, and no one else calls.
// Threads: any.
#pragma once

#include <stddef.h>
#include <stdint.h>

namespace quill::media::se_wrapper {

void multiplyComplex_sse41(const int16_t* a, const int16_t* b, int16_t* out, size_t n);
void deinterleave_sse41(const int16_t* interleaved, size_t channels, int16_t* rows);

// needs: a processor with AVX2.
void multiplyComplex_avx2(const int16_t* a, const int16_t* b, int16_t* out, size_t n);
void deinterleave_avx2(const int16_t* interleaved, size_t channels, int16_t* rows);

}  // namespace quill::media::se_wrapper
