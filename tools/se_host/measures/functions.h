// How each measure is computed, of the blocks of a span. Functions whose name ends with "Then" are for a second; the others
// are for the whole recording, or for both.
#pragma once

#include <optional>

#include "tools/se_host/measures/analysis.h"

namespace se_host {

using Value = std::optional<double>;
using MeasureFunction = Value (*)(const Analysis& analysis, Span span);

// sound_functions.cpp
Value inputRms(const Analysis& analysis, Span span);
Value inputSpeech(const Analysis& analysis, Span span);
Value inputSpeechThen(const Analysis& analysis, Span span);
Value inputPause(const Analysis& analysis, Span span);
Value inputPauseThen(const Analysis& analysis, Span span);
Value inputClipped(const Analysis& analysis, Span span);
Value faultyMicrophones(const Analysis& analysis, Span span);
Value faultyMicrophonesThen(const Analysis& analysis, Span span);
Value outputRms(const Analysis& analysis, Span span);
Value outputSpeech(const Analysis& analysis, Span span);
Value outputSpeechThen(const Analysis& analysis, Span span);
Value outputPause(const Analysis& analysis, Span span);
Value outputPauseThen(const Analysis& analysis, Span span);
Value outputClipped(const Analysis& analysis, Span span);
Value pauseReduction(const Analysis& analysis, Span span);

// echo_functions.cpp
Value echoLag(const Analysis& analysis, Span span);
Value echoLagThen(const Analysis& analysis, Span span);
Value echoAloneSeconds(const Analysis& analysis, Span span);
Value echoAloneSecondsThen(const Analysis& analysis, Span span);
Value echoReturnLoss(const Analysis& analysis, Span span);
Value echoReturnLossThen(const Analysis& analysis, Span span);
Value echoAloneLowered(const Analysis& analysis, Span span);
Value echoAloneLoweredThen(const Analysis& analysis, Span span);
Value convergence(const Analysis& analysis, Span span);
Value convergenceThen(const Analysis& analysis, Span span);
Value engineDelay(const Analysis& analysis, Span span);
Value engineDelaySince(const Analysis& analysis, Span span);
Value engineDrift(const Analysis& analysis, Span span);

// talker_functions.cpp
Value azimuth(const Analysis& analysis, Span span);
Value deviation(const Analysis& analysis, Span span);
Value echoLowered(const Analysis& analysis, Span span);
Value echoLoweredThen(const Analysis& analysis, Span span);
Value noiseLowered(const Analysis& analysis, Span span);
Value noiseLoweredThen(const Analysis& analysis, Span span);
Value talkerChange(const Analysis& analysis, Span span);
Value talkerChangeThen(const Analysis& analysis, Span span);
Value siSdr(const Analysis& analysis, Span span);
Value intelligibility(const Analysis& analysis, Span span);

}  // namespace se_host
