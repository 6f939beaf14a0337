#include "tests/webrtc_common/convolve/convolve_harness.h"

#include "kernel_check/check.h"
#include "kernel_check/references/convolve.h"

namespace quill::test {
namespace {

template <class Kernel>
KernelFunction besideReference(const char* name, void (*pose)(Problem&, Kernel*), Kernel* kernel) {
    const std::vector<Variant<Kernel>> variants = {
        {kReference, &Machine::has_nothing_special, referenceConvolve},
        {"kernel", &Machine::has_nothing_special, kernel},
    };
    return kernelFunction(name, pose, variants, {});
}

KernelFunction functionOf(ConvolveI16I16* kernel) {
    return besideReference("convolve_i16_i16", poseConvolveI16I16, kernel);
}

KernelFunction functionOf(ConvolveI16I32* kernel) {
    return besideReference("convolve_i16_i32", poseConvolveI16I32, kernel);
}

std::string sweep(const KernelFunction& function) {
    uint32_t seed = 0;
    for (const int num_out : kLengths) {
        for (const int num_taps : kLengths) {
            for (int coeffs = 0; coeffs < static_cast<int>(kNumFillers); ++coeffs) {
                for (int signal = 0; signal < static_cast<int>(kNumFillers); ++signal) {
                    const Numbers given = {{"num_out", num_out},
                                           {"num_taps", num_taps},
                                           {"coeffs.filler", coeffs},
                                           {"signal.filler", signal}};
                    if (std::string text = fault(function, function.variants[1], ++seed, given);
                        !text.empty())
                        return text;
                }
            }
        }
    }
    return {};
}

}  // namespace

std::string difference(ConvolveI16I16* kernel, uint32_t seed, const Numbers& given) {
    const KernelFunction function = functionOf(kernel);
    return fault(function, function.variants[1], seed, given);
}

std::string difference(ConvolveI16I32* kernel, uint32_t seed, const Numbers& given) {
    const KernelFunction function = functionOf(kernel);
    return fault(function, function.variants[1], seed, given);
}

std::string firstDifference(ConvolveI16I16* kernel) {
    return sweep(functionOf(kernel));
}

std::string firstDifference(ConvolveI16I32* kernel) {
    return sweep(functionOf(kernel));
}

}  // namespace quill::test
