#include "kernel_check/variants/functions.h"

namespace quill::test {

std::vector<KernelFunction> allKernelFunctions() {
    std::vector<KernelFunction> all;
    for (const auto& part : {convolveFunctions(), dspFunctions(), fftFunctions()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

}  // namespace quill::test
