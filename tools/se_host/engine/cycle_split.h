// The core cycles of a block: the wrapper's own work, the engine's, and the routines in the engine's
// hooks by kind. Measured with the time-stamp counter, given in cycles of the core.
// Threads: one, the engine's audio thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace se_host {

// The hooks that the engine calls while it processes a block, named as the variables of the interface table.
inline constexpr const char* kAudioHooks[] = {"ComputeRFir",    "AecConvolution", "VCMul_i16",
                                              "Interp1toNCore", "FwdDft",         "InvDft"};
inline constexpr size_t kNumAudioHooks = std::size(kAudioHooks);

// Of a block, on average over the blocks that count. Plain data, so that a process can send it to another.
struct CycleShares {
    struct Hook {
        double cycles;
        double calls;
    };

    double deinterleave;  // what processBlock does itself, the only work of the wrapper outside of hooks
    double engine;        // both paths, without the hooks
    std::array<Hook, kNumAudioHooks> hooks;
    size_t blocks;       // that count
    size_t interrupted;  // that do not count, because the thread was interrupted

    double total() const;
};

// Times the engine's entry points and the routines in its hooks, from its construction to the end of the
// process; so there is one at a time.
class CycleSplit {
  public:
    // needs: a started engine.
    explicit CycleSplit(size_t blocks);

    // Measures the core's clock. Call before each block; it is not part of a block's time.
    void lookAtClock();
    void beginBlock();
    void endBlock();

    // needs: a block that has ended.
    CycleShares finish();

  private:
    static constexpr size_t kNumTimed = 2 + kNumAudioHooks;  // entry points, hooks
    struct Block {
        double cycles;  // of all of it
        std::array<double, kNumTimed> cycles_in;
        std::array<double, kNumTimed> calls_of;
    };

    void countInCycles();
    CycleShares average(double longest) const;

    std::vector<Block> blocks_;   // in ticks until countInCycles
    std::vector<double> clocks_;  // cycles a tick, before each block and after the last
    uint64_t begin_ = 0;
};

}  // namespace se_host
