#include "kernel_check/self_test/self_test.h"

#include <cstdio>

#include "kernel_check/check.h"
#include "kernel_check/self_test/broken_kernels.h"

namespace quill::test {

bool selfTest(uint32_t seed, int repeat) {
    bool good = true;
    for (const KernelFunction& function : brokenFunctions()) {
        for (const FunctionVariant& variant : function.variants) {
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

}  // namespace quill::test
