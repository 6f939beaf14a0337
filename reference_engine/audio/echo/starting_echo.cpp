#include "reference_engine/audio/echo/starting_echo.h"

#include <algorithm>

#include "reference_engine/lanes/wide_registers.h"

namespace reference_engine {
namespace {

constexpr float kFade = 0.97f;        // a block: 13 dB a second
constexpr float kNegligible = 0.01f;  // -20 dB

}  // namespace

FOR_WIDE_REGISTERS void StartingEcho::raise(const FarEnd& far_end, bool audible, EchoBins& expected) {
    if (share_ < kNegligible) return;
    if (audible) share_ *= kFade;
    const float share = kShareOfFrame * share_;
    for (int p = 0; p < kPartitions; ++p) {
        const EchoBins& power = far_end.spectrum(p * kPartitionBlocks).power;
        for (int k = 0; k < kEchoBins; ++k) {
            expected.value[k] = std::max(expected.value[k], share * power.value[k]);
        }
    }
}

}  // namespace reference_engine
