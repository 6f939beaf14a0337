// Parts of a recording, in blocks of 10 ms.
#pragma once

#include <cstddef>

#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace se_host {

inline constexpr size_t kBlock = quill::media::se_wrapper::BLOCK_SIZE;
inline constexpr size_t kConvergedBlock = 200;  // an engine has two seconds to adapt to the room

struct Span {
    size_t begin;
    size_t end;  // not included

    size_t size() const { return end - begin; }
    bool contains(size_t block) const { return block >= begin && block < end; }
};

}  // namespace se_host
