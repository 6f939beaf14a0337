#include "reference_engine/audio/echo_canceller.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/audio/meters.h"
#include "reference_engine/routines/fixed_point.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr uint64_t kAudibleEnergy = 16000;  // of a block: -70 dBFS
constexpr float kMeterMemory = 0.99f;       // a block

// Mean of the microphones.
void powerOf(const LaneFft::Spectra& spectra, float (&power)[kEchoBins]) {
    for (int k = 0; k < kEchoBins; ++k) {
        const Lanes powers = spectra.re[k] * spectra.re[k] + spectra.im[k] * spectra.im[k];
        float sum = 0;
        for (int m = 0; m < kMicrophones; ++m) sum += powers[m];
        power[k] = sum / kMicrophones;
    }
}

void meanOf(const LaneFft::Spectra& spectra, EchoSpectrum* mean) {
    for (int k = 0; k < kEchoBins; ++k) {
        float re = 0;
        float im = 0;
        for (int m = 0; m < kMicrophones; ++m) {
            re += spectra.re[k][m];
            im += spectra.im[k][m];
        }
        (*mean)[k] = {re / kMicrophones, im / kMicrophones};
    }
}

// Each error's spectrum times the same factors. Divided by the frame, as the inverse transform is
// unnormalised.
void weigh(const LaneFft::Spectra& errors, const EchoSpectrum& gain, LaneFft::Spectra* out) {
    for (int k = 0; k < kEchoBins; ++k) {
        const float re = gain[k].real() / kEchoFrame;
        const float im = gain[k].imag() / kEchoFrame;
        out->re[k] = errors.re[k] * re - errors.im[k] * im;
        out->im[k] = errors.im[k] * re + errors.re[k] * im;
    }
}

}  // namespace

void EchoCanceller::init() {
    fft_.init(kEchoFrame);
    lane_fft_.init();
    far_end_.clear();
    for (auto& spectrum : far_spectra_) std::fill(std::begin(spectrum), std::end(spectrum), 0.0f);
    std::fill(std::begin(far_silent_), std::end(far_silent_), true);
    newest_ = 0;
    path_.init();
    mismatch_.init();
    kalman_.init();
    heard_ = left_ = 0;
}

void EchoCanceller::process(const int16_t* far_end, const MicrophoneBlock& in, MicrophoneBlock& out) {
    far_end_.push(far_end);
    transformFarEnd();
    int32_t echo[kMicrophones][kBlock];
    path_.predict(far_end_.oldest(), echo);
    subtract(echo, in, out);
    learn();
    if (energyOf(far_end) > kAudibleEnergy) measure(in, out);
}

void EchoCanceller::subtract(const int32_t (&echo)[kMicrophones][kBlock], const MicrophoneBlock& in,
                             MicrophoneBlock& out) {
    for (int m = 0; m < kMicrophones; ++m) {
        for (int i = 0; i < kBlock; ++i) {
            const int64_t error = int64_t{in[m][i]} - echo[m][i];
            errors_[kEchoFrame - kBlock + i].set(m, static_cast<float>(error));
            out[m][i] = saturate16(error);
        }
    }
}

void EchoCanceller::measure(const MicrophoneBlock& in, const MicrophoneBlock& out) {
    heard_ = flushed(heard_ * kMeterMemory);
    left_ = flushed(left_ * kMeterMemory);
    for (int m = 0; m < kMicrophones; ++m) {
        heard_ += static_cast<float>(energyOf(in[m]));
        left_ += static_cast<float>(energyOf(out[m]));
    }
}

float EchoCanceller::enhancementDb() const {
    return 10 * std::log10((heard_ + 1) / (left_ + 1));
}

void EchoCanceller::transformFarEnd() {
    float frame[kEchoFrame];
    std::copy_n(far_end_.delayedBy(kEchoFrame - kBlock), kEchoFrame, frame);
    newest_ = (newest_ + 1) % kSpectra;
    fft_.forward(frame, far_spectra_[newest_]);
    far_silent_[newest_] =
        std::all_of(std::begin(frame), std::end(frame), [](float sample) { return sample == 0; });
}

void EchoCanceller::learn() {
    lane_fft_.forward(errors_, &error_spectra_);
    float error_power[kEchoBins];
    EchoSpectrum mean;
    powerOf(error_spectra_, error_power);
    meanOf(error_spectra_, &mean);

    const EchoSpectrum* far_end[kPartitions];
    bool silent[kPartitions];
    for (int p = 0; p < kPartitions; ++p) {
        const int place = (newest_ + kSpectra - p * kPartitionBlocks) % kSpectra;
        far_end[p] = &far_spectra_[place];
        silent[p] = far_silent_[place];
    }
    mismatch_.update(far_end, mean);
    kalman_.predict(path_.energy(), mismatch_.found());
    kalman_.observe(far_end, error_power);
    for (int p = 0; p < kPartitions; ++p) {
        if (silent[p]) continue;  // the correction would be zero
        EchoSpectrum gain;
        kalman_.learn(p, *far_end[p], &gain);
        weigh(error_spectra_, gain, &weighted_);
        lane_fft_.backward(weighted_, &correction_);
        path_.add(p, correction_);
    }
}

}  // namespace reference_engine
