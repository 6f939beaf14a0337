#include "reference_engine/audio/beam_sharpness.h"

#include <algorithm>

#include "reference_engine/audio/meters.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.99f;  // a block: a second
constexpr float kQuiet = kBlock;  // energy of a block, against division by 0

}  // namespace

void BeamSharpness::update(const int16_t* robust, const int16_t* difference, bool counts, float most) {
    if (counts) {
        const float cross = static_cast<float>(correlationOf(robust, difference));
        const float power = static_cast<float>(energyOf(difference));
        cross_ = flushed(kMemory * cross_ + (1 - kMemory) * cross);
        power_ = flushed(kMemory * power_ + (1 - kMemory) * power);
    }
    before_ = share_;
    share_ = std::max(0.0f, std::min({-cross_ / (power_ + kQuiet), most, 1.0f}));
}

}  // namespace reference_engine
