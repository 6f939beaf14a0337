// The weights of a filter-and-sum beam former: one FIR filter for each microphone and look direction. Every
// design fills the same table, so the beam former does not depend on the design. Pure functions; [setup].
#pragma once

#include "reference_engine/format.h"

namespace reference_engine {

inline constexpr int kBeamTaps = 24;
inline constexpr int kBeamDelay = 12;  // samples by which every beam lags the centre microphone

// In the order of a correlation: the first tap multiplies the oldest sample.
struct BeamDesign {
    double taps[kMicrophones][kLocations][kBeamTaps];
};

// The taps of each microphone and direction are one phase of the interpolation routine. Scaled by 2^(15 + shift): the
// output of the routine is 2^shift times the filtered microphone.
struct BeamWeights {
    int16_t coeffs[kMicrophones][kLocations][kBeamTaps];
    int shift;
};

// The largest gains of one microphone, of full-scale samples: at which 32-bit sums do not overflow, and at which their results
// need not saturate, either.
inline constexpr double kMostGain = 1.99;
inline constexpr double kMostGainUnsaturated = 0.99;

// Uses the largest scale at which no coefficient overflows and no gain is larger than `most_gain`.
void quantise(const BeamDesign& design, double most_gain, BeamWeights* weights);

}  // namespace reference_engine
