// What a recording tells about its microphones. They stand so close together that below 800 Hz all of them hear the same;
// a microphone that does not is dead or wired wrongly.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/sound/recording.h"

namespace se_host {

inline constexpr double kSilentDbfs = -90;  // less than a step of 16 bits

struct MicrophoneCheck {
    int microphone;       // 1 to 7
    double level_dbfs;    // minus infinity for silence
    double correlation;   // median of those with the others, 200 to 800 Hz; 1: the same sound
    std::string finding;  // a sentence; empty: nothing is wrong
};

// The microphones 1 to 7.
std::vector<MicrophoneCheck> checkMicrophones(const Recording& recording);

// The findings.
std::vector<std::string> findingsOf(const std::vector<MicrophoneCheck>& checks);

}  // namespace se_host
