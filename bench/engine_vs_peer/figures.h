// Figures of a system's output for a scene. The talker's figures cover the band of 300 to 7000 Hz, so that a
// high-pass filter does not change them.
#pragma once

#include <vector>

#include "tools/scene/measure.h"

namespace engine_vs_peer {

using se_scene::Row;

// An interval of a scene, in seconds.
struct Span {
    double begin_s;
    double end_s;
};
using Spans = std::vector<Span>;

// The parts of `within` in which the one row is this much lower than the other, in pieces of 20 ms, each of them with
// such neighbours.
Spans whereLower(const Row& row, const Row& other, double decibels, const Span& within);

// Decibels by which the output is lower than the microphone, over all frequencies. `lag`: samples by which the output
// lags the microphone. NaN without spans.
double lossDb(const Row& microphone, const Row& out, double lag, const Spans& spans);

struct TalkerFigures {
    double share;   // of the talker's amplitude, in the part of the row that is a multiple of the talker
    double sdr_db;  // that part over the rest: scale-invariant signal-to-distortion ratio
};

// (Le Roux, Wisdom, Erdogan, Hershey: "SDR - half-baked or well done?", ICASSP 2019.)
TalkerFigures talkerFigures(const Row& talker, const Row& out, double lag, const Spans& spans);

double intelligibility(const Row& talker, const Row& out, double lag, const Span& span);

}  // namespace engine_vs_peer
