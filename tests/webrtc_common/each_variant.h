// A fixture that runs its tests once for each row of a family's table. Rows that this processor does not
// support are skipped with their name.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>

#include "webrtc_common/kernel_variants.h"

namespace quill {

// What a test's parameter is called.
inline void PrintTo(const KernelVariant& variant, std::ostream* stream) {
    *stream << variant.name;
}

}  // namespace quill

namespace quill::test {

template <class Variant>
class EachVariant : public ::testing::TestWithParam<Variant> {
  protected:
    void SetUp() override {
        const Variant& variant = this->GetParam();
        if (!(CPUInfo().*variant.feature)) GTEST_SKIP() << "this processor has no " << variant.name;
    }
};

// The end of a test's name: letters, digits and underscores.
inline std::string variantName(const KernelVariant& variant) {
    std::string name = variant.name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

}  // namespace quill::test

// Once in each test file, for its own class derived from EachVariant.
#define INSTANTIATE_FOR_EACH_VARIANT(fixture, variants)                    \
    INSTANTIATE_TEST_SUITE_P(Each, fixture, ::testing::ValuesIn(variants), \
                             [](const auto& row) { return ::quill::test::variantName(row.param); })
