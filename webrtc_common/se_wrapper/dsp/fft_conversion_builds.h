// The conversions that each source file of them exports to the list of builds, and no one else calls.
// Threads: any.
#pragma once

#include <stdint.h>

namespace quill::media::se_wrapper {

void widen_sse41(const int16_t* in, float* out, int count);
void narrowScaled_sse41(const float* in, float scale, int16_t* out, int count);
void narrowQ10_sse41(const float* in, float gain, int16_t* out, int count);

// needs: a processor with AVX2.
void widen_avx2(const int16_t* in, float* out, int count);
void narrowScaled_avx2(const float* in, float scale, int16_t* out, int count);
void narrowQ10_avx2(const float* in, float gain, int16_t* out, int count);

}  // namespace quill::media::se_wrapper
