// A synthetic voice: phrases of syllables with pauses between them, a pitch that falls over the
// phrase, and the sound itself by source and filter (Klatt 1980). It says nothing, but has what an engine
// looks for in speech: harmonics, formants, fricatives, stops, syllables at about four a second.
#pragma once

#include <array>
#include <vector>

#include "tools/scene/random.h"

namespace se_scene {

inline constexpr size_t kVowels = 10;

struct Voice {
    double pitch_hz;                                    // its mean
    std::array<std::array<double, 3>, kVowels> vowels;  // the first three formants, Hz
    double fourth_formant_hz;
};

extern const Voice kTalkerVoice;  // 120 Hz
extern const Voice kFarEndVoice;  // 200 Hz

// Speech from the first sample on, of arbitrary level.
std::vector<float> synthesiseSpeech(const Voice& voice, size_t frames, Random& random);

}  // namespace se_scene
