// The builds of the routines around 16-bit samples as one list, from narrow to wide: declarations and table are
// expanded from it. Code that includes this file defines
//
//     DSP_VARIANT(name, set, feature)
//
// beforehand; it is undefined at the end. `set` ends the names of the source file and of its two functions.

DSP_VARIANT("sse41", sse41, has_sse41)
DSP_VARIANT("avx2", avx2, has_avx2)

#undef DSP_VARIANT
