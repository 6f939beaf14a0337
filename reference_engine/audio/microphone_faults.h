// Finds microphones that are dead or stuck, or far too quiet or loud beside the others. The array is small: a working
// microphone hears every sound about as loud as its neighbours do. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/format.h"

namespace reference_engine {

class MicrophoneFaults {
  public:
    void init() { *this = MicrophoneFaults{}; }

    // in: the microphones of a block, without their offset.
    void update(const MicrophoneBlock& in);

    // Never more than kMostFaulty.
    bool faulty(int microphone) const { return faulty_[microphone]; }
    static constexpr int kMostFaulty = 3;

    bool any() const;
    int firstWorking() const;

  private:
    bool differs(int microphone, float usual) const;

    float level_[kMicrophones] = {};  // energy of a block, smoothed
    int blocks_[kMicrophones] = {};   // of sound for which a microphone has been other than it is taken to be
    bool faulty_[kMicrophones] = {};
};

}  // namespace reference_engine
