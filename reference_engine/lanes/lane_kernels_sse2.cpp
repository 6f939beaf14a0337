#include "reference_engine/lanes/lane_kernels_body.inl.h"

namespace reference_engine {

extern const LaneKernels kLaneKernelsSse2 = {forward, backward,   accumulate, adapt,     expect, learn,
                                             scale,   magnitudes, quantise,   correlate, steer};

}  // namespace reference_engine
