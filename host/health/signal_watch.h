// Levels of the far end and of the microphones, clipping, silence, and the last seconds of both for the delay of the echo.
// Threads: block on one thread, the results on any. rt-safe.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/audio/block_stream.h"
#include "host/live/counter.h"

namespace se_host {

class SignalWatch {
  public:
    static constexpr double kSilence = -144;  // dBFS that are given for no sound at all

    // in: the microphone, from 0, in which the echo is looked for.
    explicit SignalWatch(size_t echo_microphone);

    void block(const Block& block);

    // Whether there was a second of sound.
    bool hasLevels() const { return seconds_.get() > 0; }

    // Of the last whole second.
    double farEndDbfs() const;
    double microphoneDbfs(size_t microphone) const;
    // Whether all samples of that second were the same.
    bool isConstant(size_t microphone) const;

    uint64_t clipped(size_t microphone) const { return clipped_[microphone].get(); }
    double farEndSilentSeconds() const;

    struct Sound {
        std::vector<int16_t> far_end;
        std::vector<int16_t> microphone;
    };
    // The last seconds of the far end and of that microphone, as long as there were; at most kKept.
    Sound lastSeconds() const;

  private:
    static constexpr size_t kKept = size_t{1} << 17;       // 8.2 s
    static constexpr size_t kRing = 2 * kKept;             // what is read is not what is written, for 8 s
    static constexpr size_t kChannels = 1 + kMicrophones;  // far end first

    struct Second {
        uint64_t power = 0;  // sum of squares
        int16_t lowest = INT16_MAX;
        int16_t highest = INT16_MIN;
    };

    void count(size_t channel, const int16_t* samples, size_t step);
    void keep(const Block& block);
    void finishSecond();

    size_t echo_channel_;
    std::array<Second, kChannels> seconds_so_far_;
    size_t blocks_of_second_ = 0;
    std::array<std::atomic<uint64_t>, kChannels> power_{};  // of the last second
    std::array<std::atomic<bool>, kChannels> constant_{};
    std::array<Counter, kMicrophones> clipped_;
    Counter seconds_;
    std::atomic<uint64_t> silent_blocks_{0};  // of the far end, in a row

    std::unique_ptr<std::atomic<int16_t>[]> far_end_;
    std::unique_ptr<std::atomic<int16_t>[]> microphone_;
    std::atomic<uint64_t> kept_{0};  // frames since the beginning
};

}  // namespace se_host
