// Levels, peaks and correlations of the signals, for diagnostics and decisions. Sums over a block of 160 products of
// 16-bit samples fit in 40 bits. Pure functions of kBlock samples, rt-safe.
#pragma once

#include "reference_engine/audio/beam_former.h"
#include "reference_engine/settings.h"

namespace reference_engine {

uint64_t energyOf(const int16_t* samples);
int64_t correlationOf(const int16_t* a, const int16_t* b);
float dbfsOf(uint64_t energy);           // of a block; -120 at least
int32_t peakOf(const int16_t* samples);  // 0 to 32768

void meterMicrophones(const MicrophoneBlock& block, Readings* readings);
void meterBeams(const LiveBeams& beams, const int16_t* centre, Readings* readings);

}  // namespace reference_engine
