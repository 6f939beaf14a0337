#include "tools/se_host/measures/analysis.h"

namespace se_host {
namespace {

std::vector<int16_t> centreOf(const Recording& recording) {
    std::vector<int16_t> samples = channelOf(recording.microphones, kCentreMicrophone);
    samples.resize(recording.frames);
    return samples;
}

}  // namespace

Analysis::Analysis(const Recording& recording_, const Processed& processed_,
                   const std::optional<SceneParts>& parts_)
    : recording(recording_),
      processed(processed_),
      parts(parts_),
      microphone(centreOf(recording)),
      input(microphone),
      output(processed.output),
      pauses(pauseBlocks(microphone, processed.output)) {
    if (parts) {
        effect.emplace(*parts, processed.output);
        likeness = TalkerLikeness::find(parts->talker, processed.output);
    }
    if (!recording.has_far_end) return;
    std::vector<int16_t> far_end = recording.far_end;
    far_end.resize(recording.frames);
    lags = echoLags(far_end, microphone);
    if (!lags) return;
    echo_alone = echoAloneBlocks(far_end, microphone, processed.output, *lags);
    echo = echoAlone(echo_alone);
    convergence = convergenceOf(echo_alone);
}

}  // namespace se_host
