#include "bench/engine_vs_peer/peer.h"

namespace engine_vs_peer {
namespace {

constexpr int kFrame = static_cast<int>(kBlock);

void set(SpeexPreprocessState* state, int request, spx_int32_t value) {
    speex_preprocess_ctl(state, request, &value);
}

}  // namespace

// Other parameters keep the library's default.
Peer::Peer(const se_scene::MicrophonePositions& microphones, int tail)
    : beam_(microphones),
      echo_(speex_echo_state_init(kFrame, tail)),
      preprocess_(speex_preprocess_state_init(kFrame, se_scene::kSampleRate)) {
    spx_int32_t rate = se_scene::kSampleRate;
    speex_echo_ctl(echo_.get(), SPEEX_ECHO_SET_SAMPLING_RATE, &rate);
    set(preprocess_.get(), SPEEX_PREPROCESS_SET_DENOISE, 1);
    set(preprocess_.get(), SPEEX_PREPROCESS_SET_AGC, 0);
    set(preprocess_.get(), SPEEX_PREPROCESS_SET_DEREVERB, 0);
    speex_preprocess_ctl(preprocess_.get(), SPEEX_PREPROCESS_SET_ECHO_STATE, echo_.get());
}

void Peer::process(const int16_t* far_end, const int16_t* interleaved, int16_t* out) {
    int16_t beam[kBlock];
    beam_.process(interleaved, beam);
    speex_echo_cancellation(echo_.get(), beam, far_end, out);
    speex_preprocess_run(preprocess_.get(), out);
}

}  // namespace engine_vs_peer
