// Short-time spectra of the microphones without the echo, and of the echo that was removed from the centre one: one transform
// for all stages that look at them. In single precision, without the DFT hooks: a 16-bit transform would blur the phases of
// weak bins, and the look direction must not depend on the DFT in the hooks. Threads: init [setup]; update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/sliding_window.h"
#include "reference_engine/lanes/lane_fft.h"

namespace reference_engine {

class MicrophoneSpectra {
  public:
    static constexpr int kFrame = 512;  // samples, under a Hann window
    static constexpr int kBins = kFrame / 2 + 1;
    static constexpr int kEchoLane = kMicrophones;
    static_assert(kEchoLane < kLanes);

    void init();

    // in: the microphones of a block before and after the echo canceller.
    void update(const MicrophoneBlock& in, const MicrophoneBlock& clean);

    // A lane a microphone, and one for the echo.
    const LaneBin& bin(int k) const { return spectra_[k]; }
    const LaneBin* bins() const { return spectra_; }

    // Mean of the microphones, and of the echo.
    float meanPower(int k) const { return mean_power_[k]; }
    float echoPower(int k) const { return echo_power_[k]; }

  private:
    LaneFft fft_;
    float window_[kFrame] = {};
    SlidingWindow<LaneSample, kFrame> samples_;
    alignas(LaneBin) Lanes windowed_[kFrame] = {};
    LaneBin spectra_[kBins] = {};
    float mean_power_[kBins] = {};
    float echo_power_[kBins] = {};
};

}  // namespace reference_engine
