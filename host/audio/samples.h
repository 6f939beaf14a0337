// Samples of the caller and of the engine.
// Threads: any. rt-safe.
#pragma once

#include <cstdint>

namespace se_host {

inline int16_t toEngine(int16_t sample) {
    return sample;
}

// Rounded to the nearest, halves away from zero, whatever the rounding mode; limited. A NaN is 0.
inline int16_t toEngine(float sample) {
    const float scaled = sample * 32768.0f;
    if (!(scaled > -32768.0f)) return scaled <= -32768.0f ? int16_t{-32768} : int16_t{0};
    if (scaled >= 32767.0f) return 32767;
    return static_cast<int16_t>(scaled < 0 ? scaled - 0.5f : scaled + 0.5f);
}

inline void fromEngine(int16_t sample, int16_t& out) {
    out = sample;
}

inline void fromEngine(int16_t sample, float& out) {
    out = static_cast<float>(sample) / 32768.0f;
}

}  // namespace se_host
