#include "webrtc_common/se_wrapper/engine/process_block.h"

#include <cstring>

#include "webrtc_common/se_wrapper/dsp/deinterleave.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {
namespace {

// Row of the microphone that a bypassed block outputs.
constexpr std::size_t kBypassRow = 5;
static_assert(kMicrophoneChannels[kBypassRow] == 7);

}  // namespace

void processBlock(uint32_t numChannels, const int16_t* interleaved, uint32_t samples, int16_t* output,
                  bool enabled) {
    QUILL_CHECK_EQ_AT(record_sites::kBlockSize, BLOCK_SIZE, samples);
    // Channels after the eight of the array.
    const auto skipChannels = static_cast<int32_t>(numChannels - uint32_t{kMinChannels});
    QUILL_CHECK_GT_AT(record_sites::kChannelCount, skipChannels, -1);

    alignas(64) int16_t rows[kNumMicrophones][BLOCK_SIZE];
    deinterleaveMicrophones(interleaved, numChannels, rows[0]);
    if (enabled) {
        MMIfProcessMicrophones(rows[0], rows[1], output);
    } else {
        std::memcpy(output, rows[kBypassRow], sizeof(rows[kBypassRow]));
    }
}

}  // namespace quill::media::se_wrapper
