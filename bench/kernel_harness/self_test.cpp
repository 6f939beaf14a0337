#include "bench/kernel_harness/self_test.h"

#include <cstdio>

#include "tests/kernel_check/broken_kernels.h"
#include "tests/kernel_check/check.h"

namespace kernel_harness {

using quill::test::KernelFunction;
using quill::test::KernelVariant;

bool selfTest(uint32_t seed, int repeat) {
    bool good = true;
    for (const KernelFunction& function : quill::test::brokenFunctions()) {
        for (const KernelVariant& variant : function.variants) {
            const bool broken = &variant != &function.reference();
            const std::string text = firstFault(function, variant, seed, repeat).text;
            const bool as_expected = text.empty() != broken;
            good = good && as_expected;
            const std::string first_line = text.substr(0, text.find('\n'));
            std::printf("%s: %s, %s: %s\n", as_expected ? "ok" : "WRONG", function.name.c_str(),
                        variant.name.c_str(), text.empty() ? "nothing found" : first_line.c_str());
        }
    }
    return good;
}

}  // namespace kernel_harness
