// From interleaved capture audio to the rows that the engine takes, by the selected build.
#include "webrtc_common/se_wrapper/dsp/deinterleave.h"

#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

namespace quill::media::se_wrapper {

void deinterleaveMicrophones(const int16_t* interleaved, std::size_t channels, int16_t* rows) {
    g_dsp_kernels->deinterleave(interleaved, channels, rows);
}

}  // namespace quill::media::se_wrapper
