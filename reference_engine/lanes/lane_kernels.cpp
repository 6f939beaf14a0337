#include "reference_engine/lanes/lane_kernels.h"

namespace reference_engine {

const LaneKernels& laneKernels() {
    if (__builtin_cpu_supports("avx512f")) return kLaneKernelsAvx512;
    return __builtin_cpu_supports("avx2") ? kLaneKernelsAvx2 : kLaneKernelsSse2;
}

}  // namespace reference_engine
