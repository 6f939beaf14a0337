// Figures of both systems for a recording with a talker. What a system should keep is the talker's direct sound: with
// the reflections in the reference, a beam that suppresses more of them would get a lower figure.
#pragma once

#include "bench/engine_vs_peer/figures.h"
#include "bench/engine_vs_peer/trials.h"

namespace engine_vs_peer {

inline constexpr Target kTalkerLevel{Aim::kWithin, 3};  // dB

class TalkerMeasure {
  public:
    // `recording` exists as long as this. The talker speaks in `span`.
    TalkerMeasure(const Recording& recording, const Span& span) : recording_(recording), span_(span) {}

    const Row& direct() const { return recording_.scene.talker_direct; }

    Figure gain(const char* name, const Target& target, const Spans& spans) const;
    Figure level(const char* name, const Target& target, const Spans& spans) const;

    // The amplitude instead of the level: where the talker is far below the noise for a moment, chance adds to it and takes
    // from it alike, which a mean of decibels would not even out.
    Figure share(const char* name, const Target& target, const Spans& spans) const;
    Figure loss(const char* name, const Target& target, const Spans& spans) const;
    Figure understood() const;  // in the span
    Figure delay() const;

    // Gain, level and intelligibility in the span.
    std::vector<Figure> usual(const Target& gain_target) const;

  private:
    const Row& out(System system) const { return recording_.outputs.rows[system]; }
    double lag(System system) const { return recording_.lags.of[system]; }
    double shareOf(System system, const Spans& spans) const;

    const Recording& recording_;
    Span span_;
};

}  // namespace engine_vs_peer
