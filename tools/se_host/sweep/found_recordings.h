// Manifests of what is there: the sound files below a folder, or the lists of a speech recogniser's data folder.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/se_host/sweep/manifest.h"

namespace se_host::sweep {

// What goes for all recordings.
struct FarEndChoice {
    std::optional<int> channel;   // of the recording
    std::string suffix = "-far";  // NAME-far.wav is the far end of NAME.wav
};

// The WAV and FLAC files below a folder, in the order of their ids: the paths without their extension. Files with the
// far end's suffix, or those of parts (NAME-talker.wav, NAME-noise.wav, NAME-echo.wav) belong to the recording NAME. The
// folder of a recording below `folder` is its scenario. fails: Failure.
std::vector<Entry> recordingsBelow(const std::string& folder, const FarEndChoice& far_end);

// The lines "ID PATH" of a wav.scp; `far_end_list`, when it is not empty, is another one with the same ids.
// fails: Failure, naming file and line.
std::vector<Entry> recordingsOfList(const std::string& list, const std::string& far_end_list,
                                    const FarEndChoice& far_end);

}  // namespace se_host::sweep
