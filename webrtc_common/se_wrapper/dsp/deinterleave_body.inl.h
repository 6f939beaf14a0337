// The body of the de-interleaving, included by one source file an instruction set. See dsp_lanes.inl.h.
//
// As many frames at a time as a vector has samples, the first eight channels of each, transposed in registers;
// with 256 bits the lower halves are the frames 0 to 7, the upper halves the frames 8 to 15.
#pragma once

#include "webrtc_common/se_wrapper/dsp/deinterleave.h"
#include "webrtc_common/se_wrapper/dsp/dsp_lanes.inl.h"

namespace {

// in: x[f], channels 0 to 7 of frame f. out: x[c], frames 0 to 7 of channel c.
// Each stage interleaves rows i and i + 4; three of them turn the three bits of the frame number into the
// three bits of the lane.
template <class Lanes>
DSP_INLINE void transpose(typename Lanes::Vector (&x)[8]) {
    DSP_UNROLL for (int stage = 0; stage < 3; ++stage) {
        typename Lanes::Vector y[8];
        DSP_UNROLL for (int i = 0; i < 4; ++i) {
            y[2 * i] = Lanes::zipLow(x[i], x[i + 4]);
            y[2 * i + 1] = Lanes::zipHigh(x[i], x[i + 4]);
        }
        DSP_UNROLL for (int i = 0; i < 8; ++i) x[i] = y[i];
    }
}

DSP_INLINE void deinterleave(const int16_t* interleaved, size_t channels, int16_t* rows) {
    using namespace quill::media::se_wrapper;
    static_assert(BLOCK_SIZE % Widest::kSamples == 0);
    for (size_t first = 0; first < BLOCK_SIZE; first += Widest::kSamples) {
        const int16_t* const frames = interleaved + first * channels;
        Widest::Vector x[8];
        DSP_UNROLL for (size_t f = 0; f < 8; ++f) {
            x[f] = Widest::halves(frames + f * channels, frames + (8 + f) * channels);
        }
        transpose<Widest>(x);
        DSP_UNROLL for (size_t r = 0; r < kNumMicrophones; ++r) {
            Widest::store(rows + r * BLOCK_SIZE + first, x[kMicrophoneChannels[r]]);
        }
    }
}

}  // namespace
