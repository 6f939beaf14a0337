// The transforms that each source file of the real FFT exports to the list of builds, and no one else calls.
// Threads: any.
#pragma once

#include <stdint.h>

namespace quill::fftpack {

void forward_sse41(int n, float* r, float* wsave, const int* ifac);
void backward_sse41(int n, float* r, float* wsave, const int* ifac);
void forwardSamples_sse41(int n, const int16_t* in, float scale, int16_t* out, float* r, float* wsave,
                          const int* ifac);
void backwardSamples_sse41(int n, const int16_t* in, float gain, int16_t* out, float* r, float* wsave,
                           const int* ifac);

// needs: a processor with AVX.
void forward_avx(int n, float* r, float* wsave, const int* ifac);
void backward_avx(int n, float* r, float* wsave, const int* ifac);
void forwardSamples_avx(int n, const int16_t* in, float scale, int16_t* out, float* r, float* wsave,
                        const int* ifac);
void backwardSamples_avx(int n, const int16_t* in, float gain, int16_t* out, float* r, float* wsave,
                         const int* ifac);

// needs: a processor with AVX2.
void forward_avx2(int n, float* r, float* wsave, const int* ifac);
void backward_avx2(int n, float* r, float* wsave, const int* ifac);
void forwardSamples_avx2(int n, const int16_t* in, float scale, int16_t* out, float* r, float* wsave,
                         const int* ifac);
void backwardSamples_avx2(int n, const int16_t* in, float gain, int16_t* out, float* r, float* wsave,
                          const int* ifac);

}  // namespace quill::fftpack
