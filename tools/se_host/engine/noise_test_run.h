// Runs the engine's microphone noise test.
// Threads: one; the engine's control and audio thread for the time of the run.
#pragma once

#include "tools/se_host/sound/recording.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {

// Starts the test and feeds the recording's whole blocks until it has ended.
// result: the number of blocks that it took.
// needs: a started engine. fails: Failure when the engine has no noise test, or the recording is too short.
size_t runNoiseTest(const Recording& recording);

// needs: a test that has ended. fails: Failure when the engine gives none.
quill::media::se_wrapper::NoiseTestResults noiseTestResults();

}  // namespace se_host
