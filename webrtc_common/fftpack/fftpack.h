// Real FFT and quarter-wave cosine transforms in single precision, after the published algorithm of FFTPACK
// (P. N. Swarztrauber, "Vectorizing the FFTs", in Parallel Computations, 1982): mixed radix, decimation in
// the order of the factors, no bit reversal. Written from that description.
// Threads: any; nothing here has state of its own. It must not allocate, and does not depend on the wrapper.
//
// A caller owns the two arrays of a transform of length n:
//   wsave  2 n + 15 floats: n of scratch, then the twiddle factors. The cosine transforms put n cosines in
//          front of these: 3 n + 15.
//   ifac   20 ints: n, the number of factors, the factors. Factors are 4, 2, 3, 5, 7, 9, 11, ... as long as
//          each divides; a factor 2 is moved to the front. 20 ints hold every n below 2 * 3^18.
// Set-up fills them; every transform overwrites the scratch, so one set serves one transform at a time.
//
// All transforms: in and out are the same n floats, the results are not normalised, nothing fails. Each value
// of a real FFT is within 2^-24 sqrt(n) |in| times the sum over the factors p of 2 + p^2 / 8: a large prime
// factor costs precision as well as time. [any] rt-safe, all six. An n of 1 or less leaves everything as it
// is, where nothing else is said.
#pragma once

#include "webrtc_common/export.h"

extern "C" {

// Factorises n into ifac and fills the twiddle factors at wsave + n. The scratch stays as it is.
SE_WRAPPER_EXPORT void __ogg_fdrffti(int n, float* wsave, int* ifac);

// Forward real FFT, bin k = sum over j of r[j] e^(-2 pi i j k / n).
// out: r[0] bin 0, r[2k - 1] and r[2k] the real and imaginary part of bin k, and for even n in the last
//      place the real part of bin n/2.
SE_WRAPPER_EXPORT void __ogg_fdrfftf(int n, float* r, float* wsave, int* ifac);

// Backward real FFT: from the forward transform's result, n times its input.
SE_WRAPPER_EXPORT void __ogg_fdrfftb(int n, float* r, float* wsave, int* ifac);

// Fills wsave[k] = cos((k + 1) (pi / 2) / n), k < n, and sets up the real FFT at wsave + n. n of 1 or more.
SE_WRAPPER_EXPORT void __ogg_fdcosqi(int n, float* wsave, int* ifac);

// Forward quarter-wave cosine transform.
// out: x[i] = x[0] + 2 sum over k = 1 .. n - 1 of x[k] cos((2 i + 1) k pi / (2 n)).
SE_WRAPPER_EXPORT void __ogg_fdcosqf(int n, float* x, float* wsave, int* ifac);

// Backward quarter-wave cosine transform: undoes the forward one up to a factor 4 n, for n = 1 too.
// out: x[i] = 4 sum over k < n of x[k] cos((2 k + 1) i pi / (2 n)).
SE_WRAPPER_EXPORT void __ogg_fdcosqb(int n, float* x, float* wsave, int* ifac);
}
