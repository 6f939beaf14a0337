// The way of the sound: the caller's frames, blocks, the engine, and what is counted on the way.
// Threads: run and clock on one thread, the audio thread; bypass and the counters on any. rt-safe, as far as the engine is.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "host/audio/block_stream.h"
#include "host/audio/input.h"
#include "host/health/block_times.h"
#include "host/health/clock_watch.h"
#include "host/health/signal_watch.h"
#include "host/live/counter.h"
#include "host/live/live_engine.h"

namespace se_host {

class AudioPath {
  public:
    // needs: a started engine; `engine` outlives this.
    AudioPath(const Wiring& wiring, uint32_t quantum, LiveEngine& engine);

    // fails: false when the engine threw; the block is silent then, and the rest is processed.
    template <class Input, class Sample>
    bool run(const Input& captured, const Sample* far_end, size_t frames, Sample* mono) {
        const uint64_t failed = failed_.get();
        stream_.run(captured, far_end, frames, mono, [this](Block& block) { process(block); });
        frames_.add(frames);
        return failed_.get() == failed;
    }

    void clock(uint64_t nanoseconds) { clock_.call(nanoseconds, frames_.get()); }
    void bypass(bool bypass) { bypass_.store(bypass, std::memory_order_relaxed); }

    uint64_t frames() const { return frames_.get(); }
    uint64_t blocks() const { return blocks_.get(); }
    uint64_t bypassed() const { return bypassed_.get(); }
    uint64_t failed() const { return failed_.get(); }
    const ClockWatch& clockWatch() const { return clock_; }
    const SignalWatch& signals() const { return signals_; }
    const BlockTimes& times() const { return times_; }

  private:
    void process(Block& block);
    void processWithEdits(Block& block);

    BlockStream stream_;
    LiveEngine& engine_;
    std::atomic<bool> bypass_{false};
    Counter frames_;
    Counter blocks_;
    Counter bypassed_;
    Counter failed_;
    ClockWatch clock_;
    SignalWatch signals_;
    BlockTimes times_;
};

}  // namespace se_host
