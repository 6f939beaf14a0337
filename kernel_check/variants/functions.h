// Every kernel and its variants, as rows that the tests, the harness and its benchmark walk.
// Threads: one. A variant that uses kernels of which there are several builds sets their pointers.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/cpu_info.h"
#include "kernel_check/problem/problem.h"
#include "webrtc_common/convolve/convolve.h"

namespace quill::test {

// What a variant may need: a feature of the processor, a loaded engine, nothing.
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
    std::function<void()> prepare = nullptr;  // sets the kernels that it computes through, if any
};

// The name of a first row: it states what the others must give, and is never optimised.
inline constexpr const char* kReference = "reference";

// The same with the routine's type closed over.
struct FunctionVariant {
    std::string name;
    bool Machine::*needs;
    std::function<void(Problem&)> run;
};

// A kernel: what it must compute stands in the first row, the reference; the others are compared with it.
struct KernelFunction {
    std::string name;
    std::vector<FunctionVariant> variants;
    std::vector<Numbers> timed_cases;

    const FunctionVariant& reference() const { return variants.front(); }
};

// `pose` draws a problem and calls the routine on it.
template <class Routine>
KernelFunction kernelFunction(const char* name, void (*pose)(Problem&, Routine*),
                              const std::vector<Variant<Routine>>& variants,
                              std::vector<Numbers> timed_cases) {
    KernelFunction function{name, {}, std::move(timed_cases)};
    for (const Variant<Routine>& v : variants) {
        function.variants.push_back({v.name, v.needs, [v, pose](Problem& problem) {
                                         if (v.prepare) v.prepare();
                                         pose(problem, v.routine);
                                     }});
    }
    return function;
}

// The problems of the correlation kernels, for kernels that stand in no table.
void poseConvolveI16I16(Problem& problem, ConvolveI16I16* kernel);
void poseConvolveI16I32(Problem& problem, ConvolveI16I32* kernel);

std::vector<KernelFunction> convolveFunctions();
std::vector<KernelFunction> dspFunctions();
std::vector<KernelFunction> fftFunctions();
std::vector<KernelFunction> allKernelFunctions();

}  // namespace quill::test
