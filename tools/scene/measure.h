// Measurements of recordings: powers, levels, ratios, delays. Rows hold samples at full scale 1.0; an empty or
// silent row has the level kSilent.
#pragma once

#include "tools/scene/scene.h"

namespace se_scene {

using Row = std::vector<float>;

double fromDecibels(double level);  // as a factor on amplitudes
double powerOf(const Row& row);     // mean square
double levelDbfs(const Row& row);   // over the whole row
double decibelsOfPower(double power);

// Level over the blocks of 20 ms that are within 30 dB of the loudest: pauses do not count.
double activeLevelDbfs(const Row& row);

// Power of one row over the power of the other, in dB.
double ratioDb(const Row& signal, const Row& noise);

// The samples from `begin_s` to `end_s`, seconds, cut at the row's end.
Row excerpt(const Row& row, double begin_s, double end_s);

// Samples by which `delayed` lags `reference`, to a small fraction of one: the peak of the cross-correlation
// within +-`reach` samples.
double delayBetween(const Row& reference, const Row& delayed, int reach);

}  // namespace se_scene
