#include "reference_engine/audio/microphone_spectra.h"

#include <cmath>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {

void MicrophoneSpectra::init() {
    fft_.init(kFrame);
    for (int i = 0; i < kFrame; ++i) {
        window_[i] = static_cast<float>(0.5 - 0.5 * cosine(2 * M_PI * (i + 0.5) / kFrame));
    }
    samples_.clear();
}

FOR_WIDE_REGISTERS void MicrophoneSpectra::update(const MicrophoneBlock& in, const MicrophoneBlock& clean) {
    const int16_t* rows[kLanes];
    for (int m = 0; m < kMicrophones; ++m) rows[m] = clean[m];
    rows[kEchoLane] = in[0];
    LaneSample* const newest = samples_.advance();
    laneKernels().gather(rows, kBlock, &newest->lanes);
    for (int i = 0; i < kBlock; ++i) newest[i].lanes[kEchoLane] -= newest[i].lanes[0];
    for (int i = 0; i < kFrame; ++i) windowed_[i] = samples_.values()[i].lanes * window_[i];
    fft_.forward(windowed_, spectra_);
    laneKernels().powers(spectra_, kBins, mean_power_, echo_power_);
}

}  // namespace reference_engine
