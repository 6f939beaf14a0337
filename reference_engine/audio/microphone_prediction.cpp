#include "reference_engine/audio/microphone_prediction.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "reference_engine/audio/geometry.h"
#include "reference_engine/audio/linear_solve.h"
#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {
namespace {

// The band whose sound counts, pink: of equal power in each octave.
constexpr double kStep = 50;  // Hz
constexpr int kFirstStep = 3;
constexpr int kLastStep = 60;
constexpr double kSensorNoise = 0.1;  // of that sound's power

// Correlation of diffuse sound at two microphones that it takes `seconds` to pass.
double diffuseCorrelation(double seconds) {
    double sum = 0, weights = 0;
    for (int step = kFirstStep; step < kLastStep; ++step) {
        const double x = 2 * M_PI * kStep * step * seconds;
        sum += (x < 1e-9 ? 1 : sine(x) / x) / step;
        weights += 1.0 / step;
    }
    return sum / weights;
}

}  // namespace

void MicrophonePrediction::init() {
    for (int m = 0; m < kMicrophones; ++m) {
        for (int n = 0; n < kMicrophones; ++n) {
            correlation_[m][n] = diffuseCorrelation(delayBetween(m, n)) + (m == n ? kSensorNoise : 0);
        }
        predictions_[m] = {};
    }
    matrix_.assign(size_t{kMicrophones} * kMicrophones, 0);
    values_.assign(kMicrophones, 0);
}

void MicrophonePrediction::setFaults(const MicrophoneFaults& faults) {
    bool same = true;
    for (int m = 0; m < kMicrophones; ++m) {
        Prediction& prediction = predictions_[m];
        prediction.before = prediction.now;
        prediction.now = faults.faulty(m);
        same = same && prediction.before == prediction.now;
    }
    if (same) return;
    for (int m = 0; m < kMicrophones; ++m) {
        if (faults.faulty(m)) predictFrom(faults, m);
    }
}

// A faulty microphone has an equation of its own, whose solution is 0.
void MicrophonePrediction::predictFrom(const MicrophoneFaults& faults, int microphone) {
    for (int m = 0; m < kMicrophones; ++m) {
        for (int n = 0; n < kMicrophones; ++n) {
            const bool both_work = !faults.faulty(m) && !faults.faulty(n);
            matrix_[size_t{kMicrophones} * static_cast<size_t>(m) + static_cast<size_t>(n)] =
                both_work ? correlation_[m][n] : m == n;
        }
        values_[static_cast<size_t>(m)] = faults.faulty(m) ? 0 : correlation_[m][microphone];
    }
    solvePositiveDefinite(matrix_, values_);
    std::copy(values_.begin(), values_.end(), predictions_[microphone].weights);
}

void MicrophonePrediction::replace(MicrophoneBlock& block) const {
    for (int m = 0; m < kMicrophones; ++m) {
        const Prediction& prediction = predictions_[m];
        if (!prediction.before && !prediction.now) continue;
        for (int i = 0; i < kBlock; ++i) {
            float predicted = 0;
            for (int n = 0; n < kMicrophones; ++n) predicted += prediction.weights[n] * block[n][i];
            const float fade = static_cast<float>(i + 1) / kBlock;
            const float share = prediction.before == prediction.now ? 1 : prediction.now ? fade : 1 - fade;
            const float heard = block[m][i];
            block[m][i] = sampleOf(heard + share * (predicted - heard));
        }
    }
}

}  // namespace reference_engine
