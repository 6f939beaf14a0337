#include "reference_engine/audio/echo/echo_drift.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.9f;        // a block
constexpr float kLeastSlope = 1e4f;    // energy below which nothing is learned
constexpr float kLargestDelay = 0.5f;  // samples: beyond, the slope says nothing
constexpr double kLargestRate = 0.1;   // samples a block: 625 parts per million

// Of the delay, a block, where the paths learn in each block, and in every second one: the paths follow the delay, too, and the
// rate would swing if it were quick beside them.
constexpr float kProportional[kPartitionBlocks] = {0.06f, 0.08f};
constexpr double kIntegral[kPartitionBlocks] = {0.004, 0.0025};

// An estimate within this many standard deviations of 0 is no estimate.
constexpr float kSignificant = 2;

// Variance of an estimate, in squared samples, that is trusted by half.
constexpr float kHalfTrust = 3e-4f;

}  // namespace

FOR_WIDE_REGISTERS void EchoDrift::update(const Lanes* errors, const Lanes* echo, int blocks) {
    Lanes along = {}, slopes = {}, squares = {};
    for (int i = 1; i < kBlock; ++i) {
        const Lanes slope = (echo[i + 1] - echo[i - 1]) * 0.5f;
        along -= errors[i] * slope;
        slopes += slope * slope;
        squares += errors[i] * errors[i];
    }
    float sums[3] = {};
    for (int m = 0; m < kMicrophones; ++m) {
        sums[0] += along[m];
        sums[1] += slopes[m];
        sums[2] += squares[m];
    }
    along_ = flushed(kMemory * along_ + sums[0]);
    slope_ = flushed(kMemory * slope_ + sums[1]);
    error_ = flushed(kMemory * error_ + (1 - kMemory) * sums[2] / kBlock);
    hold();
    if (slope_ < kLeastSlope) return;

    const float variance = error_ / slope_;
    const float delay = along_ / slope_;
    const float significant = std::max(std::abs(delay) - kSignificant * std::sqrt(variance), 0.0f);
    const float trusted =
        std::copysign(std::min(significant, kLargestDelay), delay) * kHalfTrust / (kHalfTrust + variance);
    rate_ = std::clamp(rate_ + kIntegral[blocks - 1] * trusted, -kLargestRate, kLargestRate);
    step_ = rate_ + kProportional[blocks - 1] * trusted;
}

}  // namespace reference_engine
