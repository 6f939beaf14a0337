// The builds behind the AVX entry points as one list, from narrow to wide: declarations and table are expanded from
// it. Code that includes this file defines
//
//     CONVOLVE_AVX_VARIANT(name, set, feature)
//
// beforehand; it is undefined at the end. `set` ends the names of the source file and of its two functions.

CONVOLVE_AVX_VARIANT("avx", avx, has_avx)
CONVOLVE_AVX_VARIANT("avx2", avx2, has_avx2)
CONVOLVE_AVX_VARIANT("avx-vnni", avxvnni, has_avx_vnni)
CONVOLVE_AVX_VARIANT("avx512-vnni", avx512vnni, has_avx512_vnni)

#undef CONVOLVE_AVX_VARIANT
