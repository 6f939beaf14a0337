#include "reference_engine/lanes/lane_kernels_body.inl.h"

namespace reference_engine {

extern const LaneKernels kLaneKernelsAvx2 = kLaneKernels;

}  // namespace reference_engine
