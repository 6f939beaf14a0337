// What a faulty microphone would hear, from those that work: the linear prediction with the least error in sound from all
// around. It needs no delay, because the array is small beside the waves of most of the sound: a talker loses less than
// 1 dB, whichever microphone is missing. Threads: init [setup]; replace [audio] rt-safe.
#pragma once

#include <vector>

#include "reference_engine/audio/microphone_faults.h"

namespace reference_engine {

class MicrophonePrediction {
  public:
    void init();

    // in: which microphones are faulty from this block on. Their signals fade over within the block.
    void setFaults(const MicrophoneFaults& faults);

    // Replaces the signals of the faulty ones. Every block once or more, after setFaults.
    void replace(MicrophoneBlock& block) const;

  private:
    void predictFrom(const MicrophoneFaults& faults, int microphone);

    struct Prediction {
        float weights[kMicrophones];  // 0 for the faulty ones
        bool before;                  // whether it stood for the microphone at the end of the last block
        bool now;
    };

    double correlation_[kMicrophones][kMicrophones] = {};
    std::vector<double> matrix_;  // scratch; allocated by init
    std::vector<double> values_;
    Prediction predictions_[kMicrophones] = {};
};

}  // namespace reference_engine
