// Finds the bulk delay of the echo: the lag of the far end at which the microphone has the most stable phase towards it,
// over all frequencies (Knapp and Carter: The generalized correlation method for estimation of time delay, IEEE
// Transactions on Acoustics, Speech and Signal Processing 24(4), 1976, with the phase transform). Local speech has no
// stable phase towards the far end at any lag. Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "reference_engine/audio/echo/far_end.h"
#include "reference_engine/audio/sliding_window.h"
#include "reference_engine/lanes/single_fft.h"
#include "reference_engine/routines/real_fft.h"

namespace reference_engine {

class EchoDelay {
  public:
    void init();

    // in: a block of a microphone.
    void remember(const int16_t* microphone) { std::copy_n(microphone, kBlock, microphone_.advance()); }

    // in: the last kEchoFrame samples of the far end as played; whether its delay is looked for. The delay in samples, once it
    // is certain: 0 to kLags * kLag. The frames are compared once in the time of a lag.
    std::optional<int> update(const int16_t* far_end, bool search);

    // Whether the frames' comparison was due in the last update.
    bool wasDue() const { return wait_ == 0; }

  private:
    static constexpr int kLag =
        kPartition;  // samples: a fraction of the frame, so that no delay falls between two
    static constexpr int kLagBlocks = kPartitionBlocks;
    static constexpr int kLags = FarEnd::kLongestDelay / kLag;

    static constexpr int kFirstBin = 20;  // 313 Hz
    static constexpr int kBinStep = 2;
    static constexpr int kGroups = 20;  // of eight bins; up to 5300 Hz
    static constexpr int kPeakFrame = kEchoFrame / kBinStep;

    struct Phases {
        Lanes re[kGroups];
        Lanes im[kGroups];
        float power;  // mean of the bins
    };

    void findPhases(const int16_t* frame, Phases* phases);
    int strongestLag(const Phases& microphone);
    bool isUnique(int best) const;
    int peakOf(const Phases& cross) const;

    SingleFft fft_;
    RealFft peak_fft_;
    alignas(LaneBin) float window_[kEchoFrame] = {};
    SlidingWindow<int16_t, kEchoFrame> microphone_;
    int wait_ = 0;                // blocks since the last update
    Phases far_end_[kLags] = {};  // in a ring
    int newest_ = 0;
    Phases cross_[kLags] = {};
    float coherence_[kLags] = {};  // at each lag: 0 for none, 1 for an echo without anything else
    int best_ = 0;
    int best_times_ = 0;  // that it has been the best
};

}  // namespace reference_engine
