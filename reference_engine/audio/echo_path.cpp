#include "reference_engine/audio/echo_path.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include "reference_engine/engine_interface.h"

namespace reference_engine {
namespace {

constexpr int kMostFractionBits = 24;
constexpr float kLargestSum = 2147000000.0f;  // of products, less a margin for rounding: no 32-bit sum wraps
constexpr float kLargestCoefficient = 32766.0f;
constexpr float kTiny = 1e-9f;

int32_t peakOf(const int16_t* samples, int count) {
    int32_t peak = 0;
    for (int i = 0; i < count; ++i) peak = std::max(peak, std::abs(int32_t{samples[i]}));
    return peak;
}

}  // namespace

void EchoPath::init() {
    std::fill(std::begin(taps_), std::end(taps_), Lanes{});
    std::fill(std::begin(energy_), std::end(energy_), 0.0f);
}

void EchoPath::add(int partition, const LaneFft::Signals& correction) {
    Lanes* taps = taps_ + partition * kPartition;
    Lanes squares = {};
    for (int n = 0; n < kPartition; ++n) {
        taps[n] = taps[n] + correction[n];
        squares = squares + taps[n] * taps[n];
    }
    float energy = 0;
    for (int m = 0; m < kMicrophones; ++m) energy += squares[m];
    energy_[partition] = energy / kMicrophones;
}

void EchoPath::predict(int16_t* far_end, int32_t (&echo)[kMicrophones][kBlock]) {
    const int32_t peak = peakOf(far_end, kEchoTaps - 1 + kBlock);
    if (peak == 0) {
        std::fill(echo[0], echo[0] + kMicrophones * kBlock, 0);
        return;
    }
    int fraction_bits[kLanes];
    quantise(peak, fraction_bits);
    for (int m = 0; m < kMicrophones; ++m) {
        int16_t coeffs[kEchoTaps];
        for (int n = 0; n < kEchoTaps; ++n) coeffs[kEchoTaps - 1 - n] = rounded_[n][m];
        AecConvolution(coeffs, far_end, echo[m], fraction_bits[m], kBlock, kEchoTaps, 0);
    }
}

// The largest number of fraction bits at which neither a coefficient nor a sum of products overflows.
void EchoPath::quantise(int32_t peak, int (&fraction_bits)[kLanes]) {
    Lanes sums = {};
    Lanes largest = {};
    for (const Lanes& tap : taps_) {
        sums = sums + magnitude(tap);
        largest = larger(largest, magnitude(tap));
    }
    // Rounding may add half a unit to every magnitude.
    const float room = kLargestSum / static_cast<float>(peak) - 0.5f * kEchoTaps;
    Lanes scale = {}, highest = {}, lowest = {};
    for (int lane = 0; lane < kLanes; ++lane) {
        const float most = std::min(room / std::max(sums[lane], kTiny),
                                    kLargestCoefficient / std::max(largest[lane], kTiny));
        fraction_bits[lane] = std::clamp(std::ilogb(most), 0, kMostFractionBits);
        scale.set(lane, std::ldexp(1.0f, fraction_bits[lane]));
        highest.set(lane, kLargestCoefficient);
        lowest.set(lane, -kLargestCoefficient);
    }
    for (int n = 0; n < kEchoTaps; ++n) {
        round(smaller(larger(taps_[n] * scale, lowest), highest), rounded_[n]);
    }
}

}  // namespace reference_engine
