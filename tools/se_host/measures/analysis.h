// What several measures need of a recording and a run, computed once.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/health/echo_lag.h"
#include "tools/se_host/engine/processing.h"
#include "tools/se_host/measures/convergence.h"
#include "tools/se_host/measures/pause_level.h"
#include "tools/se_host/measures/pauses.h"
#include "tools/se_host/measures/span.h"
#include "tools/se_host/measures/speech_level.h"
#include "tools/se_host/measures/talker_likeness.h"
#include "tools/se_host/sound/echo_alone.h"
#include "tools/se_host/sound/recording.h"
#include "tools/se_host/sound/scene_parts.h"

namespace se_host {

// Of a sound at the engine's input or output.
struct SoundAnalysis {
    explicit SoundAnalysis(const std::vector<int16_t>& samples) : speech(samples), pauses(samples) {}

    SpeechLevel speech;
    PauseLevel pauses;
};

struct Analysis {
    // The arguments have to stay.
    Analysis(const Recording& recording, const Processed& processed, const std::optional<SceneParts>& parts);

    size_t blocks() const { return (recording.frames + kBlock - 1) / kBlock; }

    const Recording& recording;
    const Processed& processed;
    const std::optional<SceneParts>& parts;

    std::vector<int16_t> microphone;  // that of the centre
    SoundAnalysis input;              // of it
    SoundAnalysis output;
    std::vector<PauseBlock> pauses;
    std::optional<EchoLags> lags;  // nothing: no echo is heard
    std::vector<EchoAloneBlock> echo_alone;
    std::optional<EchoAlone> echo;  // of all these blocks
    std::optional<Convergence> convergence;
    std::optional<SceneEffect> effect;       // with parts
    std::optional<TalkerLikeness> likeness;  // with parts
};

}  // namespace se_host
