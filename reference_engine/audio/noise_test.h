// Microphone noise test: the spectrum of each microphone of the circle, before any processing, as mean levels
// of 30 bands over a number of blocks. Threads: start and results [control], process [audio]
// rt-safe.
#pragma once

#include "reference_engine/engine_interface.h"
#include "reference_engine/format.h"
#include "reference_engine/routines/real_fft.h"

namespace reference_engine {

class NoiseTest {
  public:
    enum State : int32_t { kIdle, kRunning, kDone, kStates };

    void init(NoiseTestRecord* results);
    void start();
    // out: `results`, with the last wanted block; unchanged until then.
    void process(const MicrophoneBlock& block, uint32_t wanted_blocks, NoiseTestRecord* results);

    State state() const { return state_; }

  private:
    static constexpr int kFrame = 512;
    static constexpr int kBands = 30;
    static constexpr int kBinsPerBand = 8;  // 250 Hz
    static constexpr int kCircle = kMicrophones - 1;
    static constexpr uint32_t kFillingBlocks = 3;  // until a frame is full of new samples

    void addSpectrum(int microphone);
    void finish(NoiseTestRecord* results);

    RealFft fft_;
    float window_[kFrame] = {};
    float frames_[kCircle][kFrame] = {};
    double power_[kBands][kCircle] = {};  // sums over the frames, full scale 1
    uint32_t blocks_ = 0;
    State state_ = kIdle;
};

}  // namespace reference_engine
