// Correlation kernels for 16-bit samples and the pointers through which they are called.
// One body of intrinsics (convolve_body.inl.h) is compiled once for each instruction set; the builds differ
// in encoding and in how many outputs stand in a register, never in a bit of their results nor in what they
// read and write. Nothing here knows the engine or the property tree.
// Threads: the kernels any; the selection set-up only.
#pragma once

#include <cstdint>

#include "common/cpu_info.h"
#include "webrtc_common/convolve/pairs.h"
#include "webrtc_common/export.h"
#include "webrtc_common/kernel_variants.h"

// Both kernels work in whole blocks of eight outputs and whole steps of eight taps, at least one of each:
//     B = max(1, ceil(num_out / 8)) blocks, S = max(1, ceil(num_taps / 8)) steps,
//     acc(i) = sum over k < 8 S of coeffs[k] * signal[i + k], i < 8 B, modulo 2^32 as a signed number.
// The coefficients are not reversed. A caller with fewer taps than 8 S pads them with zeros.
// Kept on purpose: whole blocks even for a count of 0, and sums that wrap instead of saturating, because the
// engine's fixed-point results depend on both.
//
// in:     coeffs Q15, signal int16; any alignment that their type allows.
// reads:  coeffs[0 .. 8 S - 1] and signal[0 .. 8 B + 8 S - 1], no more.
// writes: out[0 .. 8 B - 1], in ascending blocks; a block's samples are read before it is written, so `out`
//         of the 16-bit kernel may be `signal` itself. It overlaps nothing else.
// fails:  nothing; lengths are not checked.
// [any] rt-safe, the four kernels and the two pointers.
extern "C" {

// Narrowed sums: out[i] = (acc(i) + 16384) >> 15, the addition modulo 2^32, saturated to 16 bits.
using ConvolveI16I16 = void(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out,
                            int num_taps);

// Scaled sums: out[i] = ((acc(i) + r) >> shift_right) << shift_left modulo 2^32, with r = 0 for shift_right 0
// and 1 << (shift_right - 1) otherwise. The right shift is arithmetic and nothing saturates.
// needs: both shifts 0 to 31. Outside that range a shift acts as the processor's vector shifts do: it leaves
//        the sum's sign bits alone (right) or zeros (left, and so in r).
using ConvolveI16I32 = void(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right,
                            int num_out, int num_taps, int shift_left);

SE_WRAPPER_EXPORT ConvolveI16I16 convolve_i16_i16_SSSE3;
SE_WRAPPER_EXPORT ConvolveI16I32 convolve_i16_i32_SSSE3;

// needs: a processor with AVX. Their body is the 128-bit one until selectConvolveKernels finds a processor that
//        offers more.
SE_WRAPPER_EXPORT ConvolveI16I16 convolve_i16_i16_AVX;
SE_WRAPPER_EXPORT ConvolveI16I32 convolve_i16_i32_AVX;

// The selected kernels: the SSSE3 builds before any code runs, others after selectConvolveKernels.
SE_WRAPPER_EXPORT extern ConvolveI16I16* g_convolve_i16_i16;
SE_WRAPPER_EXPORT extern ConvolveI16I32* g_convolve_i16_i32;
}

namespace quill::media::se_wrapper {

// One build of the kernels, behind the entry points of this name: "ssse3" or "avx".
struct ConvolveVariant : KernelVariant {
    const char* entry;
    ConvolveI16I16* i16_i16;
    ConvolveI16I32* i16_i32;
    PairKernels pairs;
};

SE_WRAPPER_EXPORT extern const KernelVariants<ConvolveVariant> kConvolveVariants;

// Points both pointers at the AVX entry points exactly when `cpu` has AVX, and these and g_pair_kernels at the widest
// build that `cpu` runs; without AVX leaves all alone, so that a selection once made is never taken back.
// needs: no kernel is running. [setup]
SE_WRAPPER_EXPORT void selectConvolveKernels(const CPUInfo& cpu);

// The row that a call through the pointers runs; null when they hold other functions. [any] rt-safe
SE_WRAPPER_EXPORT const ConvolveVariant* selectedConvolveVariant();

}  // namespace quill::media::se_wrapper
