// The real FFT in plain scalar code: what the vectorised one is compared with, bit by bit, and measured
// against. Its data stand in rows from pass to pass, as published. It is never optimised.
// Threads: any.
#pragma once

namespace quill::test {

// The arguments, tables and results of __ogg_fdrfftf and __ogg_fdrfftb.
void scalarForwardFft(int n, float* r, float* wsave, const int* ifac);
void scalarBackwardFft(int n, float* r, float* wsave, const int* ifac);

}  // namespace quill::test
