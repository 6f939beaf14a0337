// One block through the engine.
// Threads: the audio thread. rt-safe, as far as the engine is.
#pragma once

#include <cstdint>

#include "webrtc_common/se_wrapper/engine/process_block.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace se_host {

// The far end first: the engine needs it before the microphones of the same time. What it makes of the far end is for
// hosts that play it. `bypass`: the engine stands still.
// in: captured, BLOCK_SIZE frames of `channels`; far_end, BLOCK_SIZE samples. out: mono, BLOCK_SIZE samples.
inline void processInEngine(uint32_t channels, const int16_t* captured, const int16_t* far_end, bool bypass,
                            int16_t* mono) {
    namespace se = quill::media::se_wrapper;
    int16_t played[se::BLOCK_SIZE];
    if (!bypass) se::RcvIfProcessReceivePath(far_end, played);
    se::processBlock(channels, captured, se::BLOCK_SIZE, mono, !bypass);
}

}  // namespace se_host
