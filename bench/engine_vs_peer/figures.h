// Figures of a system's output for a scene. The talker's figures cover the band of 300 to 7000 Hz, so that a
// high-pass filter does not change them.
#pragma once

#include "tools/scene/measure.h"

namespace engine_vs_peer {

using se_scene::Row;

// An interval of a scene, in seconds.
struct Span {
    double begin_s;
    double end_s;
};

// Samples by which a system's output lags the talker at the centre microphone.
double lagOf(const Row& talker, const Row& out, const Span& span);

// Echo return loss enhancement: decibels by which the output is lower than the centre microphone, over all
// frequencies.
double echoLossDb(const Row& microphone, const Row& out, double lag, const Span& span);

struct TalkerFigures {
    double level_db;  // of the part of the row that is a multiple of the talker, against the talker
    double sdr_db;    // that part over the rest: scale-invariant signal-to-distortion ratio
};

// (Le Roux, Wisdom, Erdogan, Hershey: "SDR - half-baked or well done?", ICASSP 2019.)
TalkerFigures talkerFigures(const Row& talker, const Row& out, double lag, const Span& span);

}  // namespace engine_vs_peer
