#include "pipewire/far_end.h"

#include <algorithm>
#include <optional>

namespace se_pipewire {
namespace {

std::optional<uint32_t> channelAt(const spa_audio_info_raw& format, uint32_t position) {
    const uint32_t* const end = format.position + std::min(format.channels, SPA_AUDIO_MAX_CHANNELS);
    const uint32_t* const found = std::find(format.position, end, position);
    if (found == end) return std::nullopt;
    return static_cast<uint32_t>(found - format.position);
}

}  // namespace

FarEnd::FarEnd(const spa_audio_info_raw& played) {
    const auto left = channelAt(played, SPA_AUDIO_CHANNEL_FL);
    const auto right = channelAt(played, SPA_AUDIO_CHANNEL_FR);
    left_ = left && right ? *left : 0;
    right_ = left && right ? *right : (played.channels > 1 ? 1 : 0);
}

const float* FarEnd::mono(const float* const* played, size_t begin, size_t frames, float* mixed) const {
    const float* const left = played[left_] + begin;
    const float* const right = played[right_] + begin;
    if (left == right) return left;
    for (size_t i = 0; i < frames; ++i) mixed[i] = 0.5F * (left[i] + right[i]);
    return mixed;
}

}  // namespace se_pipewire
