// The peer: SpeexDSP's echo canceller and preprocessor after a delay-and-sum of the microphones.
#pragma once

#include <speex/speex_echo.h>
#include <speex/speex_preprocess.h>

#include <memory>

#include "bench/engine_vs_peer/delay_and_sum.h"

namespace engine_vs_peer {

class Peer {
  public:
    // `tail`: samples of echo path that the canceller covers.
    Peer(const se_scene::MicrophonePositions& microphones, int tail);

    // Call it before process, and whenever the talker is elsewhere.
    void steer(const se_scene::Point& talker) { beam_.steer(talker); }

    // in: kBlock samples of the far end, kBlock interleaved frames as the device records them.
    // out: kBlock samples.
    void process(const int16_t* far_end, const int16_t* interleaved, int16_t* out);

  private:
    template <auto kFunction>
    struct Call {
        template <class State>
        void operator()(State* state) const {
            kFunction(state);
        }
    };

    DelayAndSum beam_;
    std::unique_ptr<SpeexEchoState, Call<speex_echo_state_destroy>> echo_;
    std::unique_ptr<SpeexPreprocessState, Call<speex_preprocess_state_destroy>> preprocess_;
};

}  // namespace engine_vs_peer
