// Endless sound, the same in every run: noise, in which the far end and the microphones have parts in common, with
// pauses of digital silence. Allocates nothing.
#pragma once

#include <algorithm>
#include <cstdint>

#include "webrtc_common/se_wrapper.h"

namespace reliability {

class Sound {
  public:
    static constexpr uint32_t kMostChannels = 16;
    using Block = int16_t[quill::media::se_wrapper::BLOCK_SIZE];

    // The next block: far end, and interleaved channels of the microphones.
    void next(uint32_t channels, int16_t* far_end, int16_t* interleaved) {
        const bool far_end_speaks = block_ / 300 % 4 != 3;  // pauses of 3 s
        const bool talker_speaks = block_ / 500 % 5 != 4;   // of 5 s
        for (uint32_t i = 0; i < quill::media::se_wrapper::BLOCK_SIZE; ++i) {
            const int far = far_end_speaks ? random(11) : 0;
            const int talker = talker_speaks ? random(11) : 0;
            far_end[i] = static_cast<int16_t>(far);
            for (uint32_t c = 0; c < channels; ++c) {
                const int own = far_end_speaks || talker_speaks ? random(6) : 0;
                interleaved[i * channels + c] = static_cast<int16_t>(far / 4 + talker + own);
            }
        }
        ++block_;
    }

  private:
    // From -2^bits to 2^bits - 1 (xorshift64, Marsaglia 2003).
    int random(int bits) {
        state_ ^= state_ << 13U;
        state_ ^= state_ >> 7U;
        state_ ^= state_ << 17U;
        return static_cast<int>(state_ >> 40U & ((2U << bits) - 1)) - (1 << bits);
    }

    uint64_t state_ = 88172645463325252;
    uint64_t block_ = 0;
};

// FNV-1a over the samples of a run.
class Checksum {
  public:
    void add(const int16_t* samples, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            value_ = (value_ ^ static_cast<uint16_t>(samples[i])) * 1099511628211U;
        }
    }
    uint64_t value() const { return value_; }

  private:
    uint64_t value_ = 14695981039346656037U;
};

}  // namespace reliability
