#include "reference_engine/audio/microphone_spectra.h"

#include <cmath>

#include "reference_engine/routines/elementary.h"

namespace reference_engine {

void MicrophoneSpectra::init() {
    fft_.init(kFrame);
    for (int i = 0; i < kFrame; ++i) {
        window_[i] = static_cast<float>(0.5 - 0.5 * cosine(2 * M_PI * (i + 0.5) / kFrame));
    }
    samples_.clear();
}

void MicrophoneSpectra::update(const MicrophoneBlock& in, const MicrophoneBlock& clean) {
    LaneSample* const newest = samples_.advance();
    for (int i = 0; i < kBlock; ++i) {
        Lanes& sample = newest[i].lanes;
        for (int m = 0; m < kMicrophones; ++m) sample[m] = clean[m][i];
        sample[kEchoLane] = static_cast<float>(in[0][i] - clean[0][i]);
    }
    for (int i = 0; i < kFrame; ++i) windowed_[i] = samples_.values()[i].lanes * window_[i];
    fft_.forward(windowed_, spectra_);
    laneKernels().powers(spectra_, kBins, mean_power_, echo_power_);
}

}  // namespace reference_engine
