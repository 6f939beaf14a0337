// A fixture that runs its tests once for each build of the kernels; those that this processor lacks are
// skipped by name.
#pragma once

#include <gtest/gtest.h>

#include <ostream>

#include "webrtc_common/convolve/convolve.h"

namespace quill::media::se_wrapper {

// What a test's parameter is called.
inline void PrintTo(const ConvolveVariant& variant, std::ostream* stream) {
    *stream << variant.name;
}

}  // namespace quill::media::se_wrapper

namespace quill::test {

using media::se_wrapper::ConvolveVariant;
using media::se_wrapper::kConvolveVariants;

class EachBuild : public ::testing::TestWithParam<ConvolveVariant> {
  protected:
    void SetUp() override {
        if (!(CPUInfo().*GetParam().feature)) GTEST_SKIP() << "this processor has no " << GetParam().name;
    }
    ConvolveI16I16* i16_i16() const { return GetParam().i16_i16; }
    ConvolveI16I32* i16_i32() const { return GetParam().i16_i32; }
};

}  // namespace quill::test

// Once in each test file, for its own class derived from EachBuild.
#define INSTANTIATE_FOR_EACH_BUILD(fixture) \
    INSTANTIATE_TEST_SUITE_P(Builds, fixture, ::testing::ValuesIn(::quill::test::kConvolveVariants))
