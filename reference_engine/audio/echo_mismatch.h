// Detects a changed room: errors that are coherent with the far end are unknown echo, however small the
// filter's uncertainty is; errors that are not coherent with it are local speech (after Gaensler, Hansson,
// Invarsson, Salomonsson: A double-talk detector based on coherence, IEEE Transactions on Communications
// 44(11), 1996). Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo_format.h"

namespace reference_engine {

class EchoMismatch {
  public:
    void init() { *this = EchoMismatch{}; }

    // in: the far end's spectrum for each partition; the errors' spectrum, mean of the microphones.
    void update(const EchoSpectrum* const (&far_end)[kPartitions], const EchoSpectrum& error);

    // Whether the errors of the last second are coherent with the far end, at any lag.
    bool found() const { return found_; }

  private:
    float follow(int partition, const EchoSpectrum& far_end, const EchoSpectrum& error);

    // Mean phase between the far end and the errors, each block with the same weight, so that
    // a single loud block does not decide.
    float cross_re_[kPartitions][kEchoBins] = {};
    float cross_im_[kPartitions][kEchoBins] = {};
    bool found_ = false;
};

}  // namespace reference_engine
