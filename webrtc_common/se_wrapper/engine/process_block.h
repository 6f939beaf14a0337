// The microphone path: one block of interleaved capture audio in, one block of mono out.
// Threads: audio, one block at a time, never while an engine is being set up. No state of its own.
#pragma once

#include <cstdint>

#include "webrtc_common/export.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace quill::media::se_wrapper {

// Lets the engine turn the seven microphones of a block into one mono signal, or passes one of them through.
// in:     interleaved, BLOCK_SIZE frames of `numChannels` int16 samples, of which the engine gets channels
//         1, 3, 2, 5, 6, 7, 4 unchanged, in this order; samples, the frames of the block.
//         enabled false: the engine is not called, so it does not advance, and `output` is channel 7.
// out:    output, BLOCK_SIZE samples, int16.
// reads:  the first 8 channels of each frame, nothing behind the last sample of the block.
// needs:  an engine that has been set up, when enabled; numChannels from 8 to 2^31 + 7;
//         samples == BLOCK_SIZE. Pointers are not checked.
// fails:  fatal, "BLOCK_SIZE == samples" and "skipChannels > -1". With the "check" tag filtered out it goes
//         on with BLOCK_SIZE frames, whatever `samples` says; with fewer than 8 channels it then reads past
//         the frames' ends, and the output is of no use.
// stack:  less than 4 KB, and the engine's: with either build of the reference engine less than 48 KB together,
//         so a thread with a stack of 64 KB will do. A page without access should stand below it.
// [audio] rt-safe, as far as the engine is
SE_WRAPPER_EXPORT void processBlock(uint32_t numChannels, const int16_t* interleaved, uint32_t samples,
                                    int16_t* output, bool enabled);

}  // namespace quill::media::se_wrapper
