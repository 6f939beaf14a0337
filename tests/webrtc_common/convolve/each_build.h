// A fixture that runs its tests once for each build of the correlation kernels.
#pragma once

#include "tests/webrtc_common/each_variant.h"
#include "webrtc_common/convolve/convolve.h"

namespace quill::test {

using media::se_wrapper::ConvolveVariant;
using media::se_wrapper::kConvolveVariants;

class EachBuild : public EachVariant<ConvolveVariant> {
  protected:
    ConvolveI16I16* i16_i16() const { return GetParam().i16_i16; }
    ConvolveI16I32* i16_i32() const { return GetParam().i16_i32; }
};

}  // namespace quill::test

// Once in each test file, for its own class derived from EachBuild.
#define INSTANTIATE_FOR_EACH_BUILD(fixture) \
    INSTANTIATE_FOR_EACH_VARIANT(fixture, ::quill::test::kConvolveVariants)
