// What the AVX entry points can run, one pair for each instruction set; which one is chosen stands in
// convolve.cpp.
// Threads: any.
#pragma once

#include "webrtc_common/convolve/convolve.h"

// needs: a processor with what the name says. They leave the upper halves of the vector registers zero.
extern "C" {
ConvolveI16I16 convolve_i16_i16_avx, convolve_i16_i16_avx2, convolve_i16_i16_avxvnni,
    convolve_i16_i16_avx512vnni;
ConvolveI16I32 convolve_i16_i32_avx, convolve_i16_i32_avx2, convolve_i16_i32_avxvnni,
    convolve_i16_i32_avx512vnni;
}
