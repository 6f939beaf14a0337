#include "reference_engine/audio/microphone_spectra.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/routines/elementary.h"

namespace reference_engine {

void MicrophoneSpectra::init() {
    fft_.init(kFrame);
    for (int i = 0; i < kFrame; ++i) {
        window_[i] = static_cast<float>(0.5 - 0.5 * cosine(2 * M_PI * (i + 0.5) / kFrame));
    }
    std::fill(std::begin(samples_), std::end(samples_), Lanes{});
}

void MicrophoneSpectra::update(const MicrophoneBlock& in, const MicrophoneBlock& clean) {
    std::copy(samples_ + kBlock, samples_ + kFrame, samples_);
    for (int i = 0; i < kBlock; ++i) {
        Lanes& sample = samples_[kFrame - kBlock + i];
        for (int m = 0; m < kMicrophones; ++m) sample[m] = clean[m][i];
        sample[kEchoLane] = static_cast<float>(in[0][i] - clean[0][i]);
    }
    for (int i = 0; i < kFrame; ++i) windowed_[i] = samples_[i] * window_[i];
    fft_.forward(windowed_, spectra_);
    for (int k = 0; k < kBins; ++k) {
        const Lanes shares = power(k) / kMicrophones;
        mean_power_[k] = 0;
        for (int m = 0; m < kMicrophones; ++m) mean_power_[k] += shares[m];
    }
}

}  // namespace reference_engine
