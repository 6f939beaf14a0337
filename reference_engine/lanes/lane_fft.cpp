#include "reference_engine/lanes/lane_fft.h"

#include <cmath>

#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

// Place of value `i` of `count`: its digits in reversed order. The first step of the transform is in radix 8 where
// `count` is no power of 4, all others in radix 4.
int reversed(int i, int count) {
    if (count == 1) return 0;
    const int radix = count == 8 ? 8 : 4;
    return i % radix * (count / radix) + reversed(i / radix, count / radix);
}

}  // namespace

void LaneFft::init(int size) {
    tables_.size = size;
    for (int k = 0; k < 3 * size / 4; ++k) {
        const double angle = -2 * M_PI * k / size;
        tables_.cosine[k] = flushed(static_cast<float>(cosine(angle)));
        tables_.sine[k] = flushed(static_cast<float>(sine(angle)));
    }
    for (int i = 0; i < size / 2; ++i) {
        tables_.place[i] = static_cast<uint16_t>(reversed(i, size / 2));
        tables_.source[tables_.place[i]] = static_cast<uint16_t>(i);
    }
}

}  // namespace reference_engine
