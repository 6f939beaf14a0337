// Every kernel and its variants, as rows that the tests, the harness and its benchmark walk.
// Threads: one. A variant that uses kernels of which there are several builds sets their pointers.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/cpu_info.h"
#include "kernel_check/problem/problem.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

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
    const media::se_wrapper::ConvolveVariant* kernels = nullptr;  // what it computes through, if anything
    const fftpack::RealFftVariant* real_fft = nullptr;
    const media::se_wrapper::DspVariant* dsp_kernels = nullptr;
};

// The name of a first row: it states what the others must give, and is never optimised.
inline constexpr const char* kReference = "reference";

// The same with the routine's type closed over.
struct KernelVariant {
    std::string name;
    bool Machine::*needs;
    std::function<void(Problem&)> run;
};

// A kernel: what it must compute stands in the first row, the reference; the others are compared with it.
struct KernelFunction {
    std::string name;
    std::vector<KernelVariant> variants;
    std::vector<Numbers> timed_cases;

    const KernelVariant& reference() const { return variants.front(); }
};

// `pose` draws a problem and calls the routine on it.
template <class Routine>
KernelFunction kernelFunction(const char* name, void (*pose)(Problem&, Routine*),
                              const std::vector<Variant<Routine>>& variants,
                              std::vector<Numbers> timed_cases) {
    KernelFunction function{name, {}, std::move(timed_cases)};
    for (const Variant<Routine>& v : variants) {
        function.variants.push_back({v.name, v.needs, [v, pose](Problem& problem) {
                                         if (v.kernels != nullptr) {
                                             g_convolve_i16_i16 = v.kernels->i16_i16;
                                             g_convolve_i16_i32 = v.kernels->i16_i32;
                                         }
                                         if (v.real_fft != nullptr) fftpack::g_real_fft = v.real_fft;
                                         if (v.dsp_kernels != nullptr) {
                                             media::se_wrapper::g_dsp_kernels = v.dsp_kernels;
                                         }
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
