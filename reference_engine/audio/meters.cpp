#include "reference_engine/audio/meters.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace reference_engine {
namespace {

constexpr double kFullScaleEnergy = 32768.0 * 32768.0 * kBlock;
constexpr double kLeastEnergy = 1e-12 * kFullScaleEnergy;  // shown as -120 dBFS

uint16_t clippedIn(const int16_t* samples) {
    const auto at_end = [](int16_t sample) { return sample == 32767 || sample == -32768; };
    return static_cast<uint16_t>(std::count_if(samples, samples + kBlock, at_end));
}

}  // namespace

int64_t correlationOf(const int16_t* a, const int16_t* b, int step_a) {
    int64_t sum = 0;
    for (int i = 0; i < kBlock; ++i) sum += int32_t{a[i * step_a]} * b[i];
    return sum;
}

uint64_t energyOf(const int16_t* samples, int step) {
    uint64_t sum = 0;
    for (int i = 0; i < kBlock; ++i) {
        sum += static_cast<uint64_t>(int32_t{samples[i * step]} * samples[i * step]);
    }
    return sum;
}

float dbfsOf(uint64_t energy) {
    return static_cast<float>(
        10 * std::log10(std::max(static_cast<double>(energy), kLeastEnergy) / kFullScaleEnergy));
}

int32_t peakOf(const int16_t* samples, int step) {
    int32_t peak = 0;
    for (int i = 0; i < kBlock; ++i) peak = std::max(peak, std::abs(int32_t{samples[i * step]}));
    return peak;
}

void meterMicrophones(const MicrophoneBlock& block, Readings* readings) {
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

void meterBeams(const Beams& beams, const int16_t* centre, Readings* readings) {
    for (int d = 0; d < kLocations; ++d) {
        const int16_t* beam = &beams[0][d];
        readings->beam_peak[d] = peakOf(beam, kLocations);
        readings->beam_energy[d] = energyOf(beam, kLocations);
        readings->beam_correlation[d] = correlationOf(beam, centre, kLocations);
    }
}

}  // namespace reference_engine
