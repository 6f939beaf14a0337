// Planar sound for the plugin: noise, the same in every run, in which the far end and the microphones have parts in common.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace se_pipewire_test {

using Planes = std::vector<std::vector<float>>;

// `channels` channels of `frames` samples between -0.25 and 0.25.
inline Planes noise(size_t channels, size_t frames, uint64_t seed = 88172645463325252U) {
    Planes planes(channels, std::vector<float>(frames));
    for (size_t i = 0; i < frames; ++i) {
        float common = 0;
        for (auto& plane : planes) {
            seed ^= seed << 13U;  // xorshift64, Marsaglia 2003
            seed ^= seed >> 7U;
            seed ^= seed << 17U;
            const float own = static_cast<float>(static_cast<int16_t>(seed >> 40U)) / (8 * 32768.0F);
            plane[i] = common + own;
            common = own;
        }
    }
    return planes;
}

inline std::vector<const float*> pointers(const Planes& planes, size_t begin) {
    std::vector<const float*> all;
    for (const auto& plane : planes) all.push_back(plane.data() + begin);
    return all;
}

inline std::vector<float*> pointers(Planes& planes, size_t begin) {
    std::vector<float*> all;
    for (auto& plane : planes) all.push_back(plane.data() + begin);
    return all;
}

}  // namespace se_pipewire_test
