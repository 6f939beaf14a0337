#include "reference_engine/audio/echo/first_taps.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "reference_engine/engine_interface.h"
#include "reference_engine/lanes/lane_kernels.h"

namespace reference_engine {
namespace {

static_assert(kBlock % 8 == 0, "convolution routines work in steps of eight taps");

constexpr int kMostFractionBits = 24;
constexpr int kEchoFractionBits = 4;          // of the result, where the taps have as many
constexpr float kLargestSum = 2147000000.0f;  // of products, less a margin for rounding: no 32-bit sum wraps
constexpr float kLargestCoefficient = 32766.0f;
constexpr float kTiny = 1e-9f;

int32_t peakOf(const int16_t* samples, int count) {
    int32_t peak = 0;
    for (int i = 0; i < count; ++i) peak = std::max(peak, std::abs(int32_t{samples[i]}));
    return peak;
}

}  // namespace

void FirstTaps::init() {
    *this = FirstTaps{};
}

void FirstTaps::set(const Lanes* taps) {
    std::reverse_copy(taps, taps + kPartition, taps_);
    laneKernels().magnitudes(taps_, kPartition, &sum_, &largest_);
    quantised_ = false;
}

void FirstTaps::addEcho(const int16_t* far_end, int blocks, Lanes* echo) {
    const int taps = blocks * kBlock;
    std::copy_n(far_end, taps, far_end_ + kBlock - 1);
    const FractionBits needed = fractionBitsFor(std::max(peakOf(far_end, taps), 1));
    if (!quantised_ || needed != fraction_bits_) quantise(needed);
    int32_t sums[kLanes][kBlock];
    const int32_t* rows[kLanes];
    Lanes unit;
    for (size_t m = 0; m < kLanes; ++m) {
        const int kept = std::min(fraction_bits_[m], kEchoFractionBits);
        AecConvolution(coeffs_[m] + kPartition - taps, far_end_, sums[m], fraction_bits_[m] - kept, kBlock,
                       taps, 0);
        rows[m] = sums[m];
        unit[m] = std::ldexp(1.0f, -kept);
    }
    laneKernels().addRows(rows, &unit, kBlock, echo);
}

// The largest numbers of fraction bits at which neither a coefficient nor a sum of products overflows.
FirstTaps::FractionBits FirstTaps::fractionBitsFor(int32_t peak) const {
    // Rounding may add half a unit to every magnitude.
    const float room = kLargestSum / static_cast<float>(peak) - 0.5f * kPartition;
    FractionBits bits;
    for (int m = 0; m < kLanes; ++m) {
        const float most =
            std::min(room / std::max(sum_[m], kTiny), kLargestCoefficient / std::max(largest_[m], kTiny));
        bits[static_cast<size_t>(m)] = std::clamp(std::ilogb(most), 0, kMostFractionBits);
    }
    return bits;
}

void FirstTaps::quantise(const FractionBits& fraction_bits) {
    Lanes scale = {};
    for (int m = 0; m < kLanes; ++m) scale[m] = std::ldexp(1.0f, fraction_bits[static_cast<size_t>(m)]);
    int16_t* rows[kLanes];
    for (size_t m = 0; m < kLanes; ++m) rows[m] = coeffs_[m];
    laneKernels().quantise(taps_, &scale, kLargestCoefficient, kPartition, rows);
    fraction_bits_ = fraction_bits;
    quantised_ = true;
}

}  // namespace reference_engine
