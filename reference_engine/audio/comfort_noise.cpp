#include "reference_engine/audio/comfort_noise.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {
namespace {

// Frames of noise overlap without a common phase, and fill their 512 samples: noise that fills a windowed frame adds up to 3.2
// times the power. Divided by the square root of 2, for the two parts of a bin.
constexpr float kPerPart = 1.265f;

constexpr float kMostAbove = 16;  // of the bin's power: silence stays

// Numerical Recipes' linear congruence, whose high bits are the good ones.
uint32_t next(uint32_t random) {
    return random * 1664525u + 1013904223u;
}

int16_t plus(int16_t value, float amplitude, bool negative) {
    return saturate16(value + static_cast<int>(negative ? -amplitude - 0.5f : amplitude + 0.5f));
}

}  // namespace

// The first and the last bin have no imaginary part, and are left alone.
void ComfortNoise::add(float level, const float (&power)[kSpectralBins], const float (&noise)[kSpectralBins],
                       const float (&gain)[kSpectralBins], Spectrum& spectrum) {
    if (level == 0) return;
    for (int k = 1; k < kSpectralBins - 1; ++k) {
        const float missing = level * level - gain[k] * gain[k];
        if (missing <= 0) continue;
        random_ = next(random_);
        const float amplitude =
            kPerPart * spectrum.scale * std::sqrt(missing * std::min(noise[k], kMostAbove * power[k]));
        int16_t* bin = spectrum.values + 2 * k;
        bin[0] = plus(bin[0], amplitude, (random_ & 0x80000000u) != 0);
        bin[1] = plus(bin[1], amplitude, (random_ & 0x40000000u) != 0);
    }
}

}  // namespace reference_engine
