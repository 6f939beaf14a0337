// The options that name what goes into the engine.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tools/se_host/sound/recording.h"

namespace se_host {

// --far-end and --far-end-channel; both need a recording.
void addFarEnd(CLI::App& command, RecordingOptions& options);

// Where the far end comes from, in words; empty: none.
std::string farEndText(const RecordingOptions& options);

}  // namespace se_host
