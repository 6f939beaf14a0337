// Every kernel and its variants, as rows for the tests, the harness and its benchmark. A variant that uses kernels
// with several builds sets their pointers.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/cpu_info.h"
#include "kernel_check/problem/problem.h"
#include "webrtc_common/convolve/convolve.h"

namespace quill::test {

// What a variant may need: a processor feature, a loaded engine, or nothing.
struct Machine : CPUInfo {
    bool has_nothing_special = true;
    bool has_engine = false;
};

// One line of a function's table.
template <class Routine>
struct Variant {
    const char* name;
    bool Machine::*needs;
    Routine* routine;
    std::function<void()> prepare = nullptr;  // selects the kernels that it uses, if any
};

// The name of the first row. It defines the result of the others and is never optimised.
inline constexpr const char* kReference = "reference";

// The same, independent of the routine's type.
struct FunctionVariant {
    std::string name;
    bool Machine::*needs;
    std::function<void(Problem&)> run;
};

// Shapes to be timed over a range of taps.
struct TapSweep {
    std::string name;  // of the number that tells the taps
    int first_number;  // its value for one tap
    std::vector<Numbers> shapes;
};

// A kernel: the first row is the reference, and the others are compared with it.
struct KernelFunction {
    std::string name;
    std::vector<FunctionVariant> variants;
    std::vector<Numbers> timed_cases;
    TapSweep sweep = {};

    const FunctionVariant& reference() const { return variants.front(); }
};

// `pose` draws a problem and calls the routine on it.
template <class Routine>
KernelFunction kernelFunction(const char* name, void (*pose)(Problem&, Routine*),
                              const std::vector<Variant<Routine>>& variants, std::vector<Numbers> timed_cases,
                              TapSweep sweep = {}) {
    KernelFunction function{name, {}, std::move(timed_cases), std::move(sweep)};
    for (const Variant<Routine>& v : variants) {
        function.variants.push_back({v.name, v.needs, [v, pose](Problem& problem) {
                                         if (v.prepare) v.prepare();
                                         pose(problem, v.routine);
                                     }});
    }
    return function;
}

// The problems of the correlation kernels, for kernels that are in no table.
void poseConvolveI16I16(Problem& problem, ConvolveI16I16* kernel);
void poseConvolveI16I32(Problem& problem, ConvolveI16I32* kernel);

std::vector<KernelFunction> convolveFunctions();
std::vector<KernelFunction> dspFunctions();
std::vector<KernelFunction> fftFunctions();
std::vector<KernelFunction> allKernelFunctions();

}  // namespace quill::test
