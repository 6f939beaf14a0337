#include "host/health/signal_watch.h"

#include <algorithm>
#include <cmath>

#include "host/engine/sample_rate.h"

namespace se_host {
namespace {

constexpr size_t kBlocksOfSecond = kEngineSampleRate / Block::kFrames;
constexpr double kFullScale = 32768.0;

double dbfsOf(uint64_t power) {
    if (power == 0) return SignalWatch::kSilence;
    const double mean = static_cast<double>(power) / kEngineSampleRate;
    return 10 * std::log10(mean / (kFullScale * kFullScale));
}

bool isLimit(int16_t sample) {
    return sample == INT16_MAX || sample == INT16_MIN;
}

}  // namespace

SignalWatch::SignalWatch(size_t echo_microphone)
    : echo_channel_(echo_microphone + 1),
      far_end_(new std::atomic<int16_t>[kRing] {}),
      microphone_(new std::atomic<int16_t>[kRing] {}) {}

void SignalWatch::count(size_t channel, const int16_t* samples, size_t step) {
    Second& second = seconds_so_far_[channel];
    for (size_t i = 0; i < Block::kFrames; ++i) {
        const int32_t sample = samples[i * step];
        second.power += static_cast<uint64_t>(sample * sample);
        second.lowest = std::min(second.lowest, samples[i * step]);
        second.highest = std::max(second.highest, samples[i * step]);
    }
}

void SignalWatch::block(const Block& block) {
    count(0, block.far_end, 1);
    for (size_t microphone = 0; microphone < kMicrophones; ++microphone) {
        const int16_t* const samples = block.captured + microphone + 1;
        count(microphone + 1, samples, Block::kChannels);
        uint64_t clipped = 0;
        for (size_t i = 0; i < Block::kFrames; ++i)
            clipped += isLimit(samples[i * Block::kChannels]) ? 1U : 0U;
        if (clipped > 0) clipped_[microphone].add(clipped);
    }
    const bool silent =
        std::all_of(block.far_end, block.far_end + Block::kFrames, [](int16_t s) { return s == 0; });
    silent_blocks_.store(silent ? silent_blocks_.load(std::memory_order_relaxed) + 1 : 0,
                         std::memory_order_relaxed);
    keep(block);
    if (++blocks_of_second_ == kBlocksOfSecond) finishSecond();
}

void SignalWatch::finishSecond() {
    for (size_t channel = 0; channel < kChannels; ++channel) {
        Second& second = seconds_so_far_[channel];
        power_[channel].store(second.power, std::memory_order_relaxed);
        constant_[channel].store(second.lowest == second.highest, std::memory_order_relaxed);
        second = {};
    }
    blocks_of_second_ = 0;
    seconds_.add();
}

// A frame is stored before it is counted.
void SignalWatch::keep(const Block& block) {
    const uint64_t begin = kept_.load(std::memory_order_relaxed);
    for (size_t i = 0; i < Block::kFrames; ++i) {
        const size_t at = (begin + i) % kRing;
        far_end_[at].store(block.far_end[i], std::memory_order_relaxed);
        microphone_[at].store(block.captured[i * Block::kChannels + echo_channel_],
                              std::memory_order_relaxed);
    }
    kept_.store(begin + Block::kFrames, std::memory_order_release);
}

double SignalWatch::farEndDbfs() const {
    return dbfsOf(power_[0].load(std::memory_order_relaxed));
}

double SignalWatch::microphoneDbfs(size_t microphone) const {
    return dbfsOf(power_[microphone + 1].load(std::memory_order_relaxed));
}

bool SignalWatch::isConstant(size_t microphone) const {
    return constant_[microphone + 1].load(std::memory_order_relaxed);
}

double SignalWatch::farEndSilentSeconds() const {
    return static_cast<double>(silent_blocks_.load(std::memory_order_relaxed)) / kBlocksOfSecond;
}

SignalWatch::Sound SignalWatch::lastSeconds() const {
    const uint64_t end = kept_.load(std::memory_order_acquire);
    const uint64_t length = std::min<uint64_t>(end, kKept);
    Sound sound;
    sound.far_end.reserve(length);
    sound.microphone.reserve(length);
    for (uint64_t frame = end - length; frame < end; ++frame) {
        sound.far_end.push_back(far_end_[frame % kRing].load(std::memory_order_relaxed));
        sound.microphone.push_back(microphone_[frame % kRing].load(std::memory_order_relaxed));
    }
    return sound;
}

}  // namespace se_host
