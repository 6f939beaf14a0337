// Frequency response of the high-pass, measured with tones, against the figures that its header states.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>

#include "tests/webrtc_common/dsp/reference_filter.h"

namespace quill::test {
namespace {

using media::se_wrapper::Filter;
using media::se_wrapper::kHighPass600Hz;
using Samples = std::vector<int16_t>;

constexpr double kPi = 3.14159265358979323846;
constexpr size_t kSettled = 2 * kFilterBlock;    // more than the taps are long
constexpr size_t kMeasured = 50 * kFilterBlock;  // whole periods of every multiple of 100 Hz

double phase(double hertz, size_t sample) {
    return 2 * kPi * hertz * static_cast<double>(sample) / 16000;
}

// A cosine, so that it is not zero at half the sampling rate.
Samples tone(double hertz) {
    Samples samples(kSettled + kMeasured);
    for (size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<int16_t>(std::lround(16000 * std::cos(phase(hertz, i))));
    }
    return samples;
}

Samples throughTheHighPass(const Samples& in) {
    Filter filter(kHighPass600Hz);
    Samples out;
    for (auto block = in.begin(); block != in.end(); block += kFilterBlock) {
        const Samples piece = filtered(filter, Samples(block, block + kFilterBlock), 1.0F);
        out.insert(out.end(), piece.begin(), piece.end());
    }
    return out;
}

// The component of a frequency, once the filter has settled.
std::complex<double> component(const Samples& samples, double hertz) {
    std::complex<double> sum;
    for (size_t i = kSettled; i < samples.size(); ++i) {
        sum += static_cast<double>(samples[i]) * std::polar(1.0, -phase(hertz, i));
    }
    return sum;
}

std::complex<double> response(double hertz) {
    const Samples in = tone(hertz);
    return component(throughTheHighPass(in), hertz) / component(in, hertz);
}

double responseDb(double hertz) {
    return 20 * std::log10(std::abs(response(hertz)));
}

// Half of the last digit of each figure.
TEST(HighPass600HzResponse, IsThatOfTheTable) {
    EXPECT_NEAR(responseDb(0), -41.6, 0.05);
    EXPECT_NEAR(responseDb(300), -5.3, 0.05);
    EXPECT_NEAR(responseDb(600), -0.07, 0.005);
}

TEST(HighPass600HzResponse, IsFlatAbove600Hz) {
    for (double hertz = 600; hertz <= 8000; hertz += 100) EXPECT_NEAR(responseDb(hertz), 0, 0.1) << hertz;
}

TEST(HighPass600HzResponse, RisesAllTheWayTo600Hz) {
    for (double hertz = 100; hertz <= 600; hertz += 100) {
        EXPECT_GT(responseDb(hertz), responseDb(hertz - 100) + 0.5) << hertz;
    }
}

TEST(HighPass600HzResponse, HasTheLinearPhaseOfADelayOf28Samples) {
    for (double hertz = 100; hertz <= 7900; hertz += 100) {
        const std::complex<double> rest = response(hertz) * std::polar(1.0, phase(hertz, 28));
        EXPECT_NEAR(std::arg(rest), 0, 0.001) << hertz;
    }
}

}  // namespace
}  // namespace quill::test
