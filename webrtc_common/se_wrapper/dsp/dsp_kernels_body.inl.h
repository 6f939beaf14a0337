// The two functions of a source file, which is compiled for one instruction set. See dsp_lanes.inl.h.
#pragma once

#include "webrtc_common/se_wrapper/dsp/complex_multiply_body.inl.h"
#include "webrtc_common/se_wrapper/dsp/deinterleave_body.inl.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels_builds.h"

#define DSP_FUNCTIONS(set)                                                                   \
    namespace quill::media::se_wrapper {                                                     \
    void multiplyComplex_##set(const int16_t* a, const int16_t* b, int16_t* out, size_t n) { \
        multiplyComplex(a, b, out, n);                                                       \
        Widest::clearUpperHalves();                                                          \
    }                                                                                        \
    void deinterleave_##set(const int16_t* interleaved, size_t channels, int16_t* rows) {    \
        deinterleave(interleaved, channels, rows);                                           \
        Widest::clearUpperHalves();                                                          \
    }                                                                                        \
    }
