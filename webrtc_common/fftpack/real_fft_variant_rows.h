// The builds of the real FFT as one list, from narrow to wide: declarations and table are expanded from it. Code that
// includes this file defines
//
//     REAL_FFT_VARIANT(name, set, feature)
//
// beforehand; it is undefined at the end. `set` ends the names of the source file and of its four functions.

REAL_FFT_VARIANT("sse41", sse41, has_sse41)
REAL_FFT_VARIANT("avx", avx, has_avx)
REAL_FFT_VARIANT("avx2", avx2, has_avx2)

#undef REAL_FFT_VARIANT
