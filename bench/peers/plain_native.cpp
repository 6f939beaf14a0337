#define PLAIN plain_native
#include "bench/peers/plain.inl.h"
//
#include "bench/peers/plain.h"

namespace peers {

const PlainLoops kPlainNative = {"plain loop, -march=native", plain_native::correlate, plain_native::multiply,
                                 plain_native::interpolate};

}  // namespace peers
