#include "tools/se_host/measures/analysis.h"

namespace se_host {

Analysis::Analysis(const Recording& recording_, const Processed& processed_,
                   const std::optional<SceneParts>& parts_)
    : recording(recording_),
      processed(processed_),
      parts(parts_),
      microphone(channelOf(recording_.microphones, kCentreMicrophone)) {
    microphone.resize(recording.frames);
    pauses = pauseBlocks(microphone, processed.output);
    if (parts) {
        effect.emplace(*parts, processed.output);
        likeness = talkerLikeness(parts->talker, processed.output, kConvergedBlock * kBlock);
    }
    if (!recording.has_far_end) return;
    std::vector<int16_t> far_end = recording.far_end;
    far_end.resize(recording.frames);
    lags = echoLags(far_end, microphone);
    if (lags) echo_alone = echoAloneBlocks(far_end, microphone, processed.output, *lags);
}

}  // namespace se_host
