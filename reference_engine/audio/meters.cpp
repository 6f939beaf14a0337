#include "reference_engine/audio/meters.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr double kFullScaleEnergy = 32768.0 * 32768.0 * kBlock;
constexpr double kLeastEnergy = 1e-12 * kFullScaleEnergy;  // shown as -120 dBFS

uint16_t clippedIn(const int16_t* samples) {
    uint16_t count = 0;
    for (int i = 0; i < kBlock; ++i) {
        count = static_cast<uint16_t>(count + (samples[i] == 32767 || samples[i] == -32768 ? 1 : 0));
    }
    return count;
}

}  // namespace

// The products' halves are summed apart, in 32 bits, which suits SIMD.
int64_t correlationOf(const int16_t* a, const int16_t* b) {
    int32_t high = 0;
    uint32_t low = 0;
    for (int i = 0; i < kBlock; ++i) {
        const int32_t product = int32_t{a[i]} * b[i];
        high += static_cast<int16_t>(product >> 16);
        low += static_cast<uint16_t>(product);
    }
    return int64_t{high} * 65536 + low;
}

FOR_WIDE_REGISTERS uint64_t energyOf(const int16_t* samples) {
    return static_cast<uint64_t>(correlationOf(samples, samples));
}

float dbfsOf(uint64_t energy) {
    return static_cast<float>(
        decibels(std::max(static_cast<double>(energy), kLeastEnergy) / kFullScaleEnergy));
}

int32_t peakOf(const int16_t* samples) {
    int16_t least = 0;
    int16_t largest = 0;
    for (int i = 0; i < kBlock; ++i) {
        least = std::min(least, samples[i]);
        largest = std::max(largest, samples[i]);
    }
    return std::max(-int32_t{least}, int32_t{largest});
}

FOR_WIDE_REGISTERS void meterMicrophones(const MicrophoneBlock& block, Readings* readings) {
    for (int m = 0; m < kMicrophones; ++m) {
        const int i = kChannelOf[m] - 1;
        readings->microphone_energy[i] = energyOf(block[m]);
        readings->microphone_peak[i] = static_cast<int16_t>(std::min(peakOf(block[m]), 32767));
        readings->microphone_clipped[i] = clippedIn(block[m]);
        readings->microphone_clipped_total[i] += readings->microphone_clipped[i];
        readings->microphone_dbfs[i] = dbfsOf(readings->microphone_energy[i]);
        readings->microphone_correlation[i] = correlationOf(block[m], block[0]);
    }
}

void meterBeams(const LiveBeams& beams, const int16_t* centre, Readings* readings) {
    for (int b = 0; b < kLiveBeams; ++b) {
        const int location = beams.location[b];
        readings->beam_peak[location] = peakOf(beams.samples[b]);
        readings->beam_energy[location] = energyOf(beams.samples[b]);
        readings->beam_correlation[location] = correlationOf(beams.samples[b], centre);
    }
}

}  // namespace reference_engine
