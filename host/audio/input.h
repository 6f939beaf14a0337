// What the caller captured: interleaved, or an array for each channel.
// Threads: any. rt-safe.
#pragma once

#include <cstddef>
#include <cstdint>

namespace se_host {

template <class Sample>
struct Interleaved {
    const Sample* samples;
    uint32_t channels;

    const Sample* begin(uint32_t channel, size_t frame) const { return samples + frame * channels + channel; }
    size_t step() const { return channels; }
};

template <class Sample>
struct Planes {
    const Sample* const* planes;
    uint32_t channels;

    const Sample* begin(uint32_t channel, size_t frame) const { return planes[channel] + frame; }
    size_t step() const { return 1; }
};

}  // namespace se_host
