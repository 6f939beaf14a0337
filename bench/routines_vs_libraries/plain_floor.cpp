#define PLAIN plain_floor
#include "bench/routines_vs_libraries/plain.inl.h"
//
#include "bench/routines_vs_libraries/plain.h"

namespace routines_vs_libraries {

const PlainLoops kPlainFloor = {"plain loop", plain_floor::correlate, plain_floor::multiply,
                                plain_floor::interpolate};

}  // namespace routines_vs_libraries
