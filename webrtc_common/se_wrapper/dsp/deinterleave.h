// From interleaved capture audio to the rows that the engine takes.
// It copies samples and must not change them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "webrtc_common/export.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace quill::media::se_wrapper {

// Input channel of each microphone row.
// Kept on purpose: channels 2 and 3 cross and channel 4 comes last, because the engine numbers the
// microphones that way. Channel 0 of the device is no microphone of the array.
inline constexpr std::size_t kMicrophoneChannels[] = {1, 3, 2, 5, 6, 7, 4};

inline constexpr std::size_t kNumMicrophones = sizeof kMicrophoneChannels / sizeof *kMicrophoneChannels;
inline constexpr std::size_t kMinChannels = 8;

// Copies the microphones of one block into contiguous rows.
// in:     interleaved, BLOCK_SIZE frames of `channels` int16 samples; any alignment of int16.
// out:    rows, kNumMicrophones rows of BLOCK_SIZE samples; element f of row r is channel
//         kMicrophoneChannels[r] of frame f. Does not overlap the input.
// reads:  the first 8 channels of each frame, once: interleaved[f * channels .. f * channels + 7] for
//         f < BLOCK_SIZE, nothing behind the block's last sample.
// writes: rows[0 .. kNumMicrophones * BLOCK_SIZE - 1].
// needs:  channels at least kMinChannels. With fewer, the stated elements are read just the same, past the
//         frames' ends and in the last frame past the block's.
// fails:  nothing.
// [any] rt-safe
SE_WRAPPER_EXPORT void deinterleaveMicrophones(const int16_t* interleaved, std::size_t channels,
                                               int16_t* rows);

}  // namespace quill::media::se_wrapper
