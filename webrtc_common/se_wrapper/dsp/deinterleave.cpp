// From interleaved capture audio to the rows that the engine takes: eight frames at a time, the first eight
// channels of each, transposed in registers. The instructions are those that every x86-64 processor has.
// Threads: audio.
#include "webrtc_common/se_wrapper/dsp/deinterleave.h"

#include <emmintrin.h>

namespace quill::media::se_wrapper {
namespace {

constexpr std::size_t kFrames = 8;
static_assert(BLOCK_SIZE % kFrames == 0);

// in: x[f], channels 0 to 7 of frame f. out: x[c], frames 0 to 7 of channel c.
// Each stage interleaves rows i and i + 4; three of them turn the three bits of the frame number into the
// three bits of the lane.
inline void transpose(__m128i (&x)[8]) {
    for (int stage = 0; stage < 3; ++stage) {
        __m128i y[8];
        for (int i = 0; i < 4; ++i) {
            y[2 * i] = _mm_unpacklo_epi16(x[i], x[i + 4]);
            y[2 * i + 1] = _mm_unpackhi_epi16(x[i], x[i + 4]);
        }
        for (int i = 0; i < 8; ++i) x[i] = y[i];
    }
}

}  // namespace

void deinterleaveMicrophones(const int16_t* interleaved, std::size_t channels, int16_t* rows) {
    for (std::size_t first = 0; first < BLOCK_SIZE; first += kFrames) {
        __m128i x[8];
        for (std::size_t f = 0; f < kFrames; ++f) {
            const int16_t* const frame = interleaved + (first + f) * channels;
            x[f] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(frame));
        }
        transpose(x);
        for (std::size_t r = 0; r < kNumMicrophones; ++r) {
            int16_t* const row = rows + r * BLOCK_SIZE + first;
            _mm_storeu_si128(reinterpret_cast<__m128i*>(row), x[kMicrophoneChannels[r]]);
        }
    }
}

}  // namespace quill::media::se_wrapper
