// Pure function, rt-safe.
#pragma once

#include <cmath>

namespace reference_engine {

// Far below what reaches the output, and far above the subnormal numbers, squared too.
inline constexpr float kLeastState = 1e-15f;

// A state that decays, so that it ends at 0, or a table entry that is 0 but for the rounding of pi. Without this,
// silence leads to subnormal numbers, for which processors take many times longer.
inline float flushed(float value) {
    return std::abs(value) < kLeastState ? 0.0f : value;
}

}  // namespace reference_engine
