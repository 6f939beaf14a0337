// The speed of kernels over the number of taps, and where it dips.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kernel_check/harness/selection.h"

namespace kernel_harness {

// From 16 taps on to 512, `step` apart: multiply-accumulates a core cycle.
struct Sweep {
    std::string shape;  // "num_out=80"
    const KernelFunction* function;
    std::vector<const FunctionVariant*> variants;
    std::vector<int> taps;
    std::vector<std::vector<double>> per_cycle;  // of each variant, for each number of taps

    // The speed at one number of taps, in relation to that at the better of its neighbours.
    double share(std::size_t variant, std::size_t index) const;
};

// Times the shapes of all functions that have some. References and the engine's own routines take no part. Every
// number of taps is timed several times, far apart, dips more often, and the best counts: other load passes.
std::vector<Sweep> sweepTaps(const std::vector<Selected>& rows, int step, uint32_t seed);

}  // namespace kernel_harness
