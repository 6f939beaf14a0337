// A synthetic voice: phrases of syllables with pauses between them, a pitch that falls over the
// phrase, and sound from a source-filter model (Klatt 1980). It has no meaning, but the properties of speech that an
// engine detects: harmonics, formants, fricatives, stops, about four syllables a second.
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

// The voice at another pitch, with a vocal tract that fits: from the men of the measured voices to the women, formants
// rise with the pitch to the power of 0.3.
Voice withPitch(Voice voice, double pitch_hz);

// Speech from the first sample on, of arbitrary level.
std::vector<float> synthesiseSpeech(const Voice& voice, size_t frames, Random& random);

}  // namespace se_scene
