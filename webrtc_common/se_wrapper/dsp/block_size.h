// The length of a block of audio.
#pragma once

#include <cstdint>

namespace quill::media::se_wrapper {

// Frames in a capture block, the only size that the engine takes.
inline constexpr uint32_t BLOCK_SIZE = 160;

}  // namespace quill::media::se_wrapper
