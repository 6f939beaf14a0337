#include "reference_engine/audio/echo/residual_echo.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

// Energies of the windows: of the spectra, and of the frame.
constexpr float kSpectraEnergy = 0.375f * MicrophoneSpectra::kFrame;
constexpr float kFrameEnergy = 0.5f * kSpectralFrame;

// The canceller counts less of what it observes than there is, so that it expects too much; but before the paths are known
// they may be stronger than it expects. Found by trial on scenes of both kinds.
constexpr float kKnownPath = 0.3f;
constexpr float kUnknownPath = 3;

constexpr float kMeanMemory = 0.8f;      // a block, of the powers whose changes count
constexpr float kChangesMemory = 0.95f;  // a block
constexpr float kMostLeakage = 2;
constexpr float kDecay = 0.9f;  // a block, of the removed echo: another path may ring for longer

constexpr int kFirstBin = 5;      // 156 Hz
constexpr int kLastBin = 200;     // 6250 Hz
constexpr float kAudible = 1e5f;  // power of the removed echo in a bin: samples of about 20
constexpr int kEnoughBins = 20;
constexpr float kOppositionMemory = 0.7f;
constexpr float kLeastOpposition = 0.3f;
constexpr float kMargin = 1.5f;  // as powers may rise at once

// Of the microphones' residual echo, what a sharp beam lets through, where the paths are known. Where they are not, the echo may
// be stronger than expected. Found by trial.
constexpr float kInSharpBeam = 0.3f;

constexpr float kTiny = 1e-3f;  // against division by zero; samples are integers

}  // namespace

void ResidualEcho::init() {
    *this = ResidualEcho{};
    // The DFT divides by its size, and also halves the first and the last bin.
    constexpr double kDftPower = 1.0 / kSpectralSize / kSpectralSize;
    for (int k = 0; k < kBins; ++k) {
        const double real = cosine(2 * M_PI * k / kSpectralSize);
        const double emphasis = 1 + double{kEmphasis} * kEmphasis - 2 * kEmphasis * real;
        to_frame_[k] = static_cast<float>(kDftPower * emphasis * kFrameEnergy / kSpectraEnergy);
    }
    to_frame_[0] /= 4;
    to_frame_[kBins - 1] /= 4;
}

FOR_WIDE_REGISTERS void ResidualEcho::update(const MicrophoneSpectra& spectra, const EchoBins& expected,
                                             float unknown_share, float sharpness) {
    followPowers(spectra);
    followOpposition(spectra);
    const float of_expected =
        (kKnownPath + (kUnknownPath - kKnownPath) * unknown_share) * kSpectraEnergy / kEchoWindow;
    const float of_both = opposition_ > kLeastOpposition ? kMargin * opposition_ : 0;
    const float in_output = 1 - (1 - kInSharpBeam) * sharpness * (1 - unknown_share);
    float leakages[kBands];
    for (int b = 0; b < kBands; ++b) {
        leakages[b] = std::clamp(common_[b] / (changes_[b] + kTiny), 0.0f, kMostLeakage);
    }
    for (int k = 0; k < kBins; ++k) {
        const float leakage = leakages[k / kBandBins];
        // The canceller's spectrum has two bins for each of these.
        power_[k] = std::max({of_expected * expected.value[2 * k], leakage * echo_[k],
                              of_both * (error_mean_[k] + echo_mean_[k])});
        frame_power_[k] = power_[k] * to_frame_[k] * in_output;
    }
}

FOR_WIDE_REGISTERS void ResidualEcho::followPowers(const MicrophoneSpectra& spectra) {
    float common[kBands] = {};
    float changes[kBands] = {};
    for (int k = 0; k < kBins; ++k) {
        const float error = spectra.meanPower(k);
        const float echo = spectra.echoPower(k);
        echo_[k] = std::max(echo, flushed(kDecay * echo_[k]));
        const float error_change = error - error_mean_[k];
        const float echo_change = echo - echo_mean_[k];
        error_mean_[k] = flushed(error_mean_[k] + (1 - kMeanMemory) * error_change);
        echo_mean_[k] = flushed(echo_mean_[k] + (1 - kMeanMemory) * echo_change);
        common[k / kBandBins] += error_change * echo_change;
        changes[k / kBandBins] += echo_change * echo_change;
    }
    for (int b = 0; b < kBands; ++b) {
        common_[b] = flushed(kChangesMemory * common_[b] + (1 - kChangesMemory) * common[b]);
        changes_[b] = flushed(kChangesMemory * changes_[b] + (1 - kChangesMemory) * changes[b]);
    }
}

// With an error of -d and an echo of h + d, twice their product is 2 d squared: over the sum of both powers, the share of
// both that is residual echo, taken twice. Each bin counts the same, so that a single loud one does not decide. Local
// speech has no stable phase towards the echo: over a hundred bins its share is close to 0.
FOR_WIDE_REGISTERS void ResidualEcho::followOpposition(const MicrophoneSpectra& spectra) {
    float sum = 0;
    int count = 0;
    for (int k = kFirstBin; k < kLastBin; ++k) {
        const LaneBin& bin = spectra.bin(k);
        const float echo = spectra.echoPower(k);
        if (echo < kAudible) continue;
        const float along = bin.re[0] * bin.re[MicrophoneSpectra::kEchoLane] +
                            bin.im[0] * bin.im[MicrophoneSpectra::kEchoLane];
        const float error = bin.re[0] * bin.re[0] + bin.im[0] * bin.im[0];
        sum -= 2 * along / (error + echo);
        ++count;
    }
    const float opposition = count < kEnoughBins ? 0 : sum / static_cast<float>(count);
    opposition_ = flushed(opposition_ + (1 - kOppositionMemory) * (opposition - opposition_));
}

}  // namespace reference_engine
