// Impulses between two samples.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>

#include "tools/scene/propagation.h"

namespace se_scene {
namespace {

std::complex<double> spectrumAt(const std::vector<double>& response, double hertz) {
    std::complex<double> sum = 0;
    for (size_t n = 0; n < response.size(); ++n) {
        sum += response[n] * std::polar(1.0, -2 * M_PI * hertz / kSampleRate * static_cast<double>(n));
    }
    return sum;
}

TEST(FractionalImpulse, IsOneSampleWhenItsTimeIsWhole) {
    std::vector<double> response(100);
    addImpulse(response, 50, 0.5);
    for (size_t i = 0; i < response.size(); ++i) EXPECT_NEAR(response[i], i == 50 ? 0.5 : 0, 1e-12);
}

TEST(FractionalImpulse, KeepsLevelAndPhaseUpToSevenKilohertz) {
    for (double time : {50.0, 50.1, 50.25, 50.5, 50.77, 50.999}) {
        std::vector<double> response(110);
        addImpulse(response, time, 1);
        for (double hertz : {100.0, 1000.0, 4000.0, 7000.0}) {
            const auto expected = std::polar(1.0, -2 * M_PI * hertz / kSampleRate * time);
            EXPECT_LT(std::abs(spectrumAt(response, hertz) - expected), 1e-2)
                << time << ", " << hertz << " Hz";
        }
    }
}

TEST(FractionalImpulse, AddsToWhatIsThere) {
    std::vector<double> response(100, 1.0);
    addImpulse(response, 50, 2);
    EXPECT_NEAR(response[50], 3, 1e-12);
}

TEST(FractionalImpulse, LeavesOutWhatFallsOutside) {
    for (double time : {-100.0, -0.5, 3.25, 9.5, 100.0}) {
        std::vector<double> response(10);
        addImpulse(response, time, 1);  // a write out of bounds is found by the sanitizers
        for (double sample : response) EXPECT_TRUE(std::isfinite(sample));
    }
}

}  // namespace
}  // namespace se_scene
