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
        readings->microphone_energy[m] = energyOf(block[m]);
        readings->microphone_peak[m] = static_cast<int16_t>(std::min(peakOf(block[m]), 32767));
        readings->microphone_clipped[m] = clippedIn(block[m]);
        readings->microphone_clipped_total[m] += readings->microphone_clipped[m];
        readings->microphone_dbfs[m] = dbfsOf(readings->microphone_energy[m]);
        readings->microphone_correlation[m] = correlationOf(block[m], block[0]);
    }
}

void meterBeams(const LiveBeams& beams, const int16_t* centre, Readings* readings) {
    for (int b = 0; b < kLiveBeams; ++b) {
        const int16_t* beam = &beams.samples[0][b];
        const int location = beams.location[b];
        readings->beam_peak[location] = peakOf(beam, kLiveBeams);
        readings->beam_energy[location] = energyOf(beam, kLiveBeams);
        readings->beam_correlation[location] = correlationOf(beam, centre, kLiveBeams);
    }
}

}  // namespace reference_engine
