// Any number of frames in, as many out, in blocks of the engine's size: a block is processed as soon as it is full, and
// its output follows by a constant number of frames.
// Threads: one, the audio thread. rt-safe.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "host/audio/samples.h"
#include "host/audio/wiring.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace se_host {

struct Block {
    static constexpr size_t kFrames = quill::media::se_wrapper::BLOCK_SIZE;
    static constexpr size_t kChannels = kMicrophones + 1;  // as the device delivers them, channel 0 silent

    alignas(64) int16_t captured[kFrames * kChannels];
    alignas(64) int16_t far_end[kFrames];
    alignas(64) int16_t mono[kFrames];
};

// Frames by which the output follows when every call brings a multiple of `quantum` frames: after a call up to this
// many wait for the end of their block.
inline uint32_t latencyOf(uint32_t quantum) {
    constexpr auto kFrames = static_cast<uint32_t>(Block::kFrames);
    return kFrames - std::gcd(kFrames, std::max(quantum, uint32_t{1}));
}

class BlockStream {
  public:
    BlockStream(const Wiring& wiring, uint32_t latency) : wiring_(wiring), waiting_(latency) {}

    // `process` fills the mono sound of a full block. far_end: null for the channel of the wiring.
    template <class Input, class Sample, class Process>
    void run(const Input& captured, const Sample* far_end, size_t frames, Sample* mono, Process&& process) {
        for (size_t done = 0; done < frames;) {
            const size_t count = std::min(frames - done, Block::kFrames - filled_);
            take(captured, far_end == nullptr ? nullptr : far_end + done, done, count);
            if (filled_ == Block::kFrames) {
                process(block_);
                filled_ = 0;
                for (const int16_t sample : block_.mono) put(sample);
            }
            for (size_t i = 0; i < count; ++i) fromEngine(get(), mono[done + i]);
            done += count;
        }
    }

  private:
    static constexpr size_t kCapacity = 512;  // a power of two above twice a block

    template <class Input, class Sample>
    void take(const Input& captured, const Sample* far_end, size_t frame, size_t count) {
        for (size_t microphone = 0; microphone < kMicrophones; ++microphone) {
            const int32_t channel = wiring_.microphones[microphone];
            if (channel == Wiring::kNone) continue;  // silent since the beginning
            const Sample* sample = captured.begin(static_cast<uint32_t>(channel), frame);
            int16_t* to = block_.captured + filled_ * Block::kChannels + microphone + 1;
            for (size_t i = 0; i < count; ++i, sample += captured.step(), to += Block::kChannels)
                *to = toEngine(*sample);
        }
        takeFarEnd(captured, far_end, frame, count);
        filled_ += count;
    }

    template <class Input, class Sample>
    void takeFarEnd(const Input& captured, const Sample* far_end, size_t frame, size_t count) {
        int16_t* const to = block_.far_end + filled_;
        if (far_end == nullptr && wiring_.far_end == Wiring::kNone) {
            std::fill_n(to, count, int16_t{0});
            return;
        }
        const size_t step = far_end != nullptr ? 1 : captured.step();
        if (far_end == nullptr) far_end = captured.begin(static_cast<uint32_t>(wiring_.far_end), frame);
        for (size_t i = 0; i < count; ++i) to[i] = toEngine(far_end[i * step]);
    }

    void put(int16_t sample) { output_[(begin_ + waiting_++) % kCapacity] = sample; }

    int16_t get() {
        --waiting_;
        return output_[begin_++ % kCapacity];
    }

    Wiring wiring_;
    Block block_{};
    size_t filled_ = 0;  // frames of the block that have come
    std::array<int16_t, kCapacity> output_{};
    size_t begin_ = 0;
    size_t waiting_;  // samples that the caller has not got
};

}  // namespace se_host
