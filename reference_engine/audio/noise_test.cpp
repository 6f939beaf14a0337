// Averaged windowed periodograms (Welch: The use of fast Fourier transform for the estimation of power
// spectra, IEEE Transactions on Audio and Electroacoustics 15(2), 1967), summed over each band so that noise
// of any bandwidth adds up to its mean square.
#include "reference_engine/audio/noise_test.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr double kLeastPower = 1e-12;  // -120 dBFS
constexpr float kLeastLevel = -120;

}  // namespace

void NoiseTest::init(NoiseTestRecord* results) {
    fft_.init(kFrame);
    double sum_of_squares = 0;
    for (int i = 0; i < kFrame; ++i) {
        window_[i] = static_cast<float>(0.5 - 0.5 * cosine(2 * M_PI * (i + 0.5) / kFrame));
        sum_of_squares += double{window_[i]} * double{window_[i]};
    }
    // One-sided spectrum with full scale 1: the squared bins of white noise add up to its mean square.
    const double scale = std::sqrt(2 / (sum_of_squares * kFrame)) / 32768;
    for (float& value : window_) value = static_cast<float>(value * scale);
    for (auto& row : results->level_dbfs) std::fill(std::begin(row), std::end(row), kLeastLevel);
    state_ = kIdle;
}

void NoiseTest::start() {
    for (auto& row : power_) std::fill(std::begin(row), std::end(row), 0.0);
    blocks_ = 0;
    state_ = kRunning;
}

void NoiseTest::process(const MicrophoneBlock& block, uint32_t wanted_blocks, NoiseTestRecord* results) {
    if (state_ != kRunning) return;
    for (int m = 0; m < kCircle; ++m) {
        float* frame = frames_[m];
        std::copy(frame + kBlock, frame + kFrame, frame);
        std::copy(block[m + 1], block[m + 1] + kBlock, frame + kFrame - kBlock);
    }
    if (++blocks_ <= kFillingBlocks) return;
    for (int m = 0; m < kCircle; ++m) addSpectrum(m);
    if (blocks_ >= kFillingBlocks + wanted_blocks) finish(results);
}

void NoiseTest::addSpectrum(int microphone) {
    float windowed[kFrame];
    std::complex<float> bins[kFrame / 2 + 1];
    for (int i = 0; i < kFrame; ++i) windowed[i] = frames_[microphone][i] * window_[i];
    fft_.forward(windowed, bins);
    for (int k = 0; k < kBands * kBinsPerBand; ++k) {
        const double re = double{bins[k].real()};
        const double im = double{bins[k].imag()};
        power_[k / kBinsPerBand][microphone] += (k == 0 ? 0.5 : 1.0) * (re * re + im * im);
    }
}

void NoiseTest::finish(NoiseTestRecord* results) {
    const double frames = blocks_ - kFillingBlocks;
    for (int band = 0; band < kBands; ++band) {
        for (int m = 0; m < kCircle; ++m) {
            const double power = std::max(power_[band][m] / frames, kLeastPower);
            results->level_dbfs[band][m] = static_cast<float>(decibels(power));
        }
    }
    state_ = kDone;
}

}  // namespace reference_engine
