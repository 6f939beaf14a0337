#include "reference_engine/audio/beam_weights.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr double kLeastLoad = 1e-4;

// At most 1 when no coefficient overflows in Q15 and the gain is not too large.
double loadOf(const double (&taps)[kBeamTaps], double most_gain) {
    double largest = 0, sum = 0;
    for (double tap : taps) {
        largest = std::max(largest, std::abs(tap));
        sum += std::abs(tap);
    }
    return std::max(largest * 32768 / 32767, sum / most_gain);
}

double loadOf(const BeamDesign& design, double most_gain) {
    double load = kLeastLoad;
    for (const auto& microphone : design.taps) {
        for (const auto& taps : microphone) load = std::max(load, loadOf(taps, most_gain));
    }
    return load;
}

}  // namespace

void quantise(const BeamDesign& design, double most_gain, BeamWeights* weights) {
    weights->shift = static_cast<int>(std::floor(-logarithm2(loadOf(design, most_gain))));
    const double scale = std::ldexp(32768.0, weights->shift);
    for (int m = 0; m < kMicrophones; ++m) {
        for (int location = 0; location < kLocations; ++location) {
            for (int k = 0; k < kBeamTaps; ++k) {
                weights->coeffs[m][location][k] =
                    static_cast<int16_t>(std::lround(design.taps[m][location][k] * scale));
            }
        }
    }
}

}  // namespace reference_engine
