// The DFT that the engine calls through its hooks: 16-bit blocks and packed 16-bit half spectra around a real
// FFT in single precision.
// Threads: the transforms audio, one call at a time on an object, objects independent of each other; initFFT
// set-up only, one call at a time.
//
// The host's rounding mode, in force during a transform or during initFFT, moves a value of the forward transform by at
// most one unit, and one of the inverse transform, at unity and for a spectrum of the forward transform. The flushing of
// denormals changes nothing: none arises.
//
// Packed spectrum of an even length n, n + 2 int16 values, with
// X[k] = sum over j of x[j] e^(-2 pi i j k / n):
//   [0]          Re X[0] / (2 n)             [1]      0, ignored on input
//   [2k, 2k + 1] Re, Im X[k] / n, 0 < k < n/2
//   [n]          Re X[n/2] / (2 n)           [n + 1]  0, not read on input
#pragma once

#include <cstdint>

#include "webrtc_common/export.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::media::se_wrapper {

// Gives an object of the engine a context of its own, which lives to the end of the process. Objects of one
// size share nothing; an object that is set up again leaves its former context to the list.
// in:    dft_size n, samples of a block; data_len m, how many of them the zero-padding transforms keep.
// needs: n of 1 or more, even for the packed format to make sense.
// fails: std::bad_alloc passes, with `obj` and the list as they were.
// [setup]
SE_WRAPPER_EXPORT void initFFT(DftObjStruct* obj, uint16_t dft_size, uint16_t data_len);

// Forward transform.
// in:     n samples. dft_type 2: the data stand at the end, 3: at the start of the block, and the other n - m
//         samples are set to zero in `in` itself; any other: all n samples count.
// out:    packed spectrum; may be `in`, or overlap it.
// reads:  in[0 .. n - 1].  writes: out[0 .. n + 1], and the padding in `in`.
// needs:  an object of initFFT.
// fails:  fatal, when scale_factor_q10 is not 1024 (unity) or len_out_buf is less than n + 2.
// Kept on purpose: DC is halved before it is truncated toward zero, Nyquist after, by a shift that rounds
// down, because the engine's own transform differs just so. With the "check" tag filtered out, the transform
// goes on and does not scale.
// [audio] rt-safe
SE_WRAPPER_EXPORT void fwdFFT(DftObj_t* obj, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10,
                              int16_t* out, uint16_t len_out_buf);

// Inverse transform: at unity it gives back what the forward transform was given, but for what that lost when it
// truncated each value of the spectrum. That is up to 2 units of a sine at full scale, some 25 (n = 64) to 110
// (n = 1024) of white noise, n + 1 of a single sample, and less than 1.5 n + 3 in any case.
// in:     packed spectrum; scale_factor_q10, the gain of the output in Q10, 1024 = unity.
// out:    n samples, rounded, saturated; may be `in`, or overlap it. Returns n.
// reads:  in[0] and in[2 .. n].  writes: out[0 .. n - 1].
// needs:  an object of initFFT. The last argument is ignored.
// fails:  fatal, when dft_type is not 4. With the "check" tag filtered out, the transform goes on.
// [audio] rt-safe
SE_WRAPPER_EXPORT uint16_t invFFT(DftObj_t* obj, int16_t* in, uint16_t dft_type, uint16_t scale_factor_q10,
                                  int16_t* out, uint16_t ignored);

}  // namespace quill::media::se_wrapper
