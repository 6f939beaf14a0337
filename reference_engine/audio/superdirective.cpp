// Superdirective weights (Bitzer, Simmer: Superdirective microphone arrays, in: Microphone Arrays, Springer
// 2001) against spherically isotropic noise, regularised by a white noise of the microphones (Cox, Zeskind,
// Owen: Robust adaptive beamforming, IEEE Transactions on Acoustics, Speech and Signal Processing 35(10),
// 1987). All taps are found at once, as the least mean square of diffuse noise, sensor noise and distortion
// of the look direction over the whole band, so no spectrum is truncated to the length of the filters. The
// diffuse noise is pink: low frequencies, where directivity of a small array amplifies sensor noise, get only
// a little of it with robust weights.
#include "reference_engine/audio/superdirective.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <utility>
#include <vector>

#include "reference_engine/audio/geometry.h"
#include "reference_engine/audio/linear_solve.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr int kUnknowns = kMicrophones * kBeamTaps;
constexpr int kFrequencies = 320;  // from 0 to half the sampling rate
constexpr double kStep = 0.5 * kSampleRate / kFrequencies;

// Shares of the three parts. The total diffuse noise at a microphone is 1. With as much noise of each sensor, the
// weights improve the SNR by 4.4 dB or more in pink diffuse noise and by 7.2 dB in sensor noise (averaging: 8.5 dB). The
// sharp weights are 2 dB better in pink diffuse noise; the sensor noise becomes 15 dB louder than one sensor's at 100 to 300 Hz.
constexpr double kRobustSensorNoise = 1;
constexpr double kSharpSensorNoise = 0.0015;
constexpr double kDistortion = 300;
constexpr double kTopDistortion = 30;    // above kTop, where fractional delays are inaccurate
constexpr double kTop = 7000;            // Hz
constexpr double kLowestPink = 20;       // Hz
constexpr double kHighPassCorner = 130;  // Hz; noise below is removed before the beam former

// A symmetric system; only the lower triangle is filled.
struct System {
    std::vector<double> matrix = std::vector<double>(kUnknowns * kUnknowns);
    std::vector<double> target = std::vector<double>(kUnknowns);

    double& at(int row, int column) {
        return matrix[size_t{kUnknowns} * static_cast<size_t>(row) + static_cast<size_t>(column)];
    }
};

double frequency(int index) {
    return (index + 0.5) * kStep;
}

// Radians a sample.
double angle(int index) {
    return 2 * M_PI * frequency(index) / kSampleRate;
}

double sinc(double x) {
    return std::abs(x) < 1e-9 ? 1.0 : sine(x) / x;
}

// Power of pink noise in one step after the high-pass; before it, all steps from kLowestPink up sum to 1.
double diffusePower(int index) {
    const double f = frequency(index);
    const double ratio = f / kHighPassCorner;
    const double passed = ratio * ratio / (1 + ratio * ratio);
    const double octaves = logarithm2(0.5 * kSampleRate / kLowestPink);
    return kStep / f / (M_LN2 * octaves) * passed * passed;
}

// Correlation of the diffuse noise at two microphones, at lags of whole samples.
void noiseCorrelation(int m, int n, double (&correlation)[kBeamTaps]) {
    const double seconds = delayBetween(m, n);
    for (int index = 0; index < kFrequencies; ++index) {
        const double power = diffusePower(index) * sinc(2 * M_PI * frequency(index) * seconds);
        for (int lag = 0; lag < kBeamTaps; ++lag) correlation[lag] += power * cosine(angle(index) * lag);
    }
}

void addDiffuseNoise(System& system) {
    for (int m = 0; m < kMicrophones; ++m) {
        for (int n = 0; n <= m; ++n) {
            double correlation[kBeamTaps] = {};
            noiseCorrelation(m, n, correlation);
            for (int i = 0; i < kBeamTaps; ++i) {
                for (int k = 0; k < kBeamTaps; ++k) {
                    system.at(m * kBeamTaps + i, n * kBeamTaps + k) += correlation[std::abs(i - k)];
                }
            }
        }
    }
}

// Squared deviation from a pure delay of kBeamDelay for sound from `azimuth`.
void addDistortion(double azimuth, System& system) {
    for (int index = 0; index < kFrequencies; ++index) {
        const double share = (frequency(index) < kTop ? kDistortion : kTopDistortion) / kFrequencies;
        double re[kUnknowns], im[kUnknowns];
        for (int m = 0; m < kMicrophones; ++m) {
            for (int k = 0; k < kBeamTaps; ++k) {
                const double late =
                    kBeamTaps - 1 - k - leadOf(m, azimuth) * kSampleRate - kBeamDelay;  // samples
                re[m * kBeamTaps + k] = cosine(angle(index) * late);
                im[m * kBeamTaps + k] = sine(angle(index) * late);
            }
        }
        for (int row = 0; row < kUnknowns; ++row) {
            system.target[static_cast<size_t>(row)] += share * re[row];
            for (int column = 0; column <= row; ++column) {
                system.at(row, column) += share * (re[row] * re[column] + im[row] * im[column]);
            }
        }
    }
}

// Of a regular circle: the microphone in the place of `m` after that many steps of 60 degrees.
int turned(int m, int steps) {
    constexpr int kCircle = kMicrophones - 1;
    return m == 0 ? 0 : 1 + (m - 1 + steps) % kCircle;
}

// With sensor noise of this power, which is white: for a location and its rotations by `distinct` steps each.
void solve(System system, double sensor_noise, int location, int distinct, BeamDesign* design) {
    for (int i = 0; i < kUnknowns; ++i) system.at(i, i) += sensor_noise;
    solvePositiveDefinite(system.matrix, system.target);
    for (int steps = 0; steps < kLocations / distinct; ++steps) {
        for (int m = 0; m < kMicrophones; ++m) {
            const double* taps = &system.target[size_t{kBeamTaps} * static_cast<size_t>(m)];
            std::copy(taps, taps + kBeamTaps, design->taps[turned(m, steps)][location + distinct * steps]);
        }
    }
}

}  // namespace

void designSuperdirective(BeamDesign* robust, BeamDesign* sharp) {
    // Of a regular circle towards a microphone and between two; all others are rotations of these.
    const int distinct = isRegularCircle() ? 2 : kLocations;
    System noise;
    addDiffuseNoise(noise);
    for (int location = 0; location < distinct; ++location) {
        System system = noise;
        addDistortion(azimuthOf(location), system);
        solve(system, kRobustSensorNoise, location, distinct, robust);
        solve(std::move(system), kSharpSensorNoise, location, distinct, sharp);
    }
}

}  // namespace reference_engine
