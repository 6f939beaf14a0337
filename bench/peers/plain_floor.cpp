#define PLAIN plain_floor
#include "bench/peers/plain.inl.h"
//
#include "bench/peers/plain.h"

namespace peers {

const PlainLoops kPlainFloor = {"plain loop", plain_floor::correlate, plain_floor::multiply,
                                plain_floor::interpolate};

}  // namespace peers
