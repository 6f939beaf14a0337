// The weights of a filter-and-sum beam former: one FIR filter for each microphone and look direction. Any
// design fills the same table, so the beam former does not know which one it runs. Pure functions; [setup].
#pragma once

#include "reference_engine/audio/format.h"

namespace reference_engine {

inline constexpr int kBeamTaps = 24;
inline constexpr int kBeamDelay = 12;  // samples by which every beam lags the centre microphone

// In the order of a correlation: the first tap meets the oldest sample.
struct BeamDesign {
    double taps[kMicrophones][kLocations][kBeamTaps];
};

// As the interpolation routine wants it: for each microphone the directions as phases. Scaled by
// 2^(15 + shift): what the routine gives is 2^shift times the filtered microphone.
struct BeamWeights {
    int16_t coeffs[kMicrophones][kLocations * kBeamTaps];
    int shift;
};

// Takes the largest scale at which no coefficient and no 32-bit sum of full-scale samples overflows.
void quantise(const BeamDesign& design, BeamWeights* weights);

}  // namespace reference_engine
