// The far end as the echo canceller sees it: later by the bulk delay of the echo, and stretched by the difference of the
// clocks of loudspeaker and microphones, so that the echo's path stands still. Its spectra are kept for the whole tail.
// Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include <cstdint>

#include "reference_engine/audio/echo/echo_format.h"
#include "reference_engine/audio/sliding_window.h"
#include "reference_engine/lanes/single_fft.h"

namespace reference_engine {

class FarEnd {
  public:
    static constexpr int kLongestDelay = 9600;  // samples: 600 ms
    static constexpr int kSpectra =
        (kPartitions - 1) * kPartitionBlocks + 2;  // and those of the block before

    void init();

    // in: a block as played; `drift`, samples by which its delay grows within this block.
    void push(const int16_t* block, double drift);

    // Starts a change of the delay. It takes a few blocks, as the spectra of the past are computed again, a few a block.
    // needs: 0 to kLongestDelay.
    void moveTo(int delay);
    bool moving() const { return moving_; }
    double delay() const { return delay_; }

    // No sound within all that it remembers.
    bool silent() const { return silent_blocks_ == kHistoryBlocks; }

    // Computes the spectra of the last frame; while it moves, some of those at the new delay, too. True when a move has come
    // to its end.
    bool transform();

    // Of the frame that ended `blocks` before the last one.
    const FarSpectrum& spectrum(int blocks) const {
        const Ring& ring = rings_[present_];
        return ring.spectra[(ring.newest + blocks) % kSpectra];
    }

    // Of the frame that ends `later` blocks after the last one, with silence from the newest block on. Without the power.
    const FarSpectrum& transformPast(int later);

    // The last blocks, later by the delay.
    const int16_t* newest(int blocks) const { return aligned_ + kEchoFrame - blocks * kBlock; }

    // As played, the last kEchoFrame samples, oldest first.
    const int16_t* played() const { return history_.values() + kHistory - kEchoFrame; }

  private:
    static constexpr int kOldFrames = 3;  // a block, while it moves
    static constexpr int kHistoryBlocks = 102;
    static constexpr int kHistory = kHistoryBlocks * kBlock;
    static constexpr int kReach = 12;  // samples on either side of an interpolated one
    static constexpr int kPhases = 64;
    static_assert(kHistory > kLongestDelay + kEchoFrame + kSpectra * kBlock + kReach);

    // In a ring, the newest first.
    struct Ring {
        FarSpectrum spectra[kSpectra];
        int newest = 0;
        int known = 0;

        FarSpectrum& newer();  // than all known
        FarSpectrum& older();  // needs: not all are known
    };

    void designInterpolation();
    void align(double drift);
    void interpolate(double position, double step, int16_t* out) const;
    void transform(const int16_t* frame, FarSpectrum& out);
    const int16_t* movedFrame(int age) const;
    void finishMove();

    SlidingWindow<int16_t, kHistory> history_;
    int16_t aligned_[kEchoFrame] = {};
    int silent_blocks_ = 0;
    double delay_ = 0;
    alignas(Lanes) float taps_[kPhases + 1][2 * kReach] = {};  // of the interpolation

    SingleFft fft_;
    FarSpectrum past_;
    Ring rings_[2];
    int present_ = 0;  // of the rings; the other one is filled while it moves
    bool moving_ = false;
    int next_delay_ = 0;
};

}  // namespace reference_engine
