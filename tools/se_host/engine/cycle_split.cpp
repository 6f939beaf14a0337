#include "tools/se_host/engine/cycle_split.h"

#include <algorithm>
#include <numeric>

#include "tools/core_clock/core_clock.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

// A block that takes more than this multiple of the median was interrupted; the engine's own work varies less.
constexpr double kInterrupted = 3;

// The timed functions. The entry points contain the hooks' calls.
enum Timed : size_t { kReceivePath, kMicrophones, kFirstHook };

struct Tally {
    uint64_t ticks;
    uint64_t calls;
};
Tally g_tallies[kFirstHook + kNumAudioHooks];

class Stopwatch {
  public:
    explicit Stopwatch(Tally& tally) : tally_(tally), begin_(core_clock::ticks()) {}
    ~Stopwatch() {
        tally_.ticks += core_clock::ticks() - begin_;
        ++tally_.calls;
    }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

  private:
    Tally& tally_;
    uint64_t begin_;
};

// Replaces the routine of a slot, and calls it.
template <size_t timed, class Routine>
struct TimedRoutine;

template <size_t timed, class Result, class... Arguments>
struct TimedRoutine<timed, Result (*)(Arguments...)> {
    static inline Result (*routine)(Arguments...) = nullptr;
    static Result call(Arguments... arguments) {
        const Stopwatch stopwatch(g_tallies[timed]);
        return routine(arguments...);
    }
};

template <size_t timed, class Routine>
void time(Routine& slot) {
    using Timer = TimedRoutine<timed, Routine>;
    if (slot == Timer::call) return;
    Timer::routine = slot;
    slot = Timer::call;
}

void timeTheEngine() {
    time<kReceivePath>(se::RcvIfProcessReceivePath);
    time<kMicrophones>(se::MMIfProcessMicrophones);
    time<kFirstHook + 0>(*se::ComputeRFir_FcnHook);
    time<kFirstHook + 1>(*se::AecConvolution_FcnHook);
    time<kFirstHook + 2>(*se::VCMul_i16_FcnHook);
    time<kFirstHook + 3>(*se::Interp1toNCore_FcnHook);
    if (se::FwdDft_FcnHook == nullptr) return;
    time<kFirstHook + 4>(*se::FwdDft_FcnHook);
    time<kFirstHook + 5>(*se::InvDft_FcnHook);
}

}  // namespace

double CycleShares::total() const {
    return std::accumulate(hooks.begin(), hooks.end(), deinterleave + engine,
                           [](double sum, const Hook& hook) { return sum + hook.cycles; });
}

CycleSplit::CycleSplit(size_t blocks) {
    blocks_.reserve(blocks);
    clocks_.reserve(blocks + 1);
    timeTheEngine();
}

void CycleSplit::lookAtClock() {
    clocks_.push_back(core_clock::cyclesPerTick());
}

void CycleSplit::beginBlock() {
    std::fill(std::begin(g_tallies), std::end(g_tallies), Tally{});
    begin_ = core_clock::ticks();
}

void CycleSplit::endBlock() {
    Block block{static_cast<double>(core_clock::ticks() - begin_), {}, {}};
    for (size_t i = 0; i < kNumTimed; ++i) {
        block.cycles_in[i] = static_cast<double>(g_tallies[i].ticks);
        block.calls_of[i] = static_cast<double>(g_tallies[i].calls);
    }
    blocks_.push_back(block);
}

// An interrupted clock measurement gives too slow a clock, so the faster of two counts.
void CycleSplit::countInCycles() {
    for (size_t i = 0; i < blocks_.size(); ++i) {
        const double cycles_per_tick = std::max(clocks_[i], clocks_[i + 1]);
        blocks_[i].cycles *= cycles_per_tick;
        for (double& cycles : blocks_[i].cycles_in) cycles *= cycles_per_tick;
    }
}

CycleShares CycleSplit::finish() {
    lookAtClock();
    countInCycles();
    std::vector<double> cycles;
    for (const Block& block : blocks_) cycles.push_back(block.cycles);
    const auto middle = cycles.begin() + static_cast<std::ptrdiff_t>(cycles.size() / 2);
    std::nth_element(cycles.begin(), middle, cycles.end());
    return average(kInterrupted * *middle);
}

CycleShares CycleSplit::average(double longest) const {
    Block sum{};
    CycleShares shares{};
    for (const Block& block : blocks_) {
        if (block.cycles > longest) continue;
        ++shares.blocks;
        sum.cycles += block.cycles;
        for (size_t i = 0; i < kNumTimed; ++i) {
            sum.cycles_in[i] += block.cycles_in[i];
            sum.calls_of[i] += block.calls_of[i];
        }
    }
    shares.interrupted = blocks_.size() - shares.blocks;

    const auto blocks = static_cast<double>(shares.blocks);
    const double in_engine = (sum.cycles_in[kReceivePath] + sum.cycles_in[kMicrophones]) / blocks;
    shares.deinterleave = sum.cycles / blocks - in_engine;
    shares.engine = in_engine;
    for (size_t i = 0; i < kNumAudioHooks; ++i) {
        shares.hooks[i] = {sum.cycles_in[kFirstHook + i] / blocks, sum.calls_of[kFirstHook + i] / blocks};
        shares.engine -= shares.hooks[i].cycles;
    }
    return shares;
}

}  // namespace se_host
