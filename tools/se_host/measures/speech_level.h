// The level of speech while it is active: ITU-T Recommendation P.56 (2011), method B.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace se_host {

// In dBFS. Nothing without sound. in: 16 kHz.
std::optional<double> activeSpeechLevel(const std::vector<int16_t>& samples);

}  // namespace se_host
