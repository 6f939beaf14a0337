// Hears when the room is no longer as the canceller believes: errors that go with the far end are echo that
// was not known, however small the filter thinks its uncertainty is; errors that do not are people who speak
// (after Gaensler, Hansson, Invarsson, Salomonsson: A double-talk detector based on coherence, IEEE
// Transactions on Communications 44(11), 1996). Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo_format.h"

namespace reference_engine {

class EchoMismatch {
  public:
    void init() { *this = EchoMismatch{}; }

    // in: the far end's spectrum for each partition; the errors' spectrum, mean of the microphones.
    void update(const EchoSpectrum* const (&far_end)[kPartitions], const EchoSpectrum& error);

    // Whether the errors of the last second go with the far end, at whatever lag.
    bool found() const { return found_; }

  private:
    float follow(int partition, const EchoSpectrum& far_end, const EchoSpectrum& error);

    // Mean phase between the far end and the errors, each block counting alike: one loud block proves
    // nothing.
    float cross_re_[kPartitions][kEchoBins] = {};
    float cross_im_[kPartitions][kEchoBins] = {};
    bool found_ = false;
};

}  // namespace reference_engine
