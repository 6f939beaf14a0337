#define PLAIN plain_native
#include "bench/routines_vs_libraries/plain.inl.h"
//
#include "bench/routines_vs_libraries/plain.h"

namespace routines_vs_libraries {

const PlainLoops kPlainNative = {"plain loop, -march=native", plain_native::correlate, plain_native::multiply,
                                 plain_native::interpolate};

}  // namespace routines_vs_libraries
