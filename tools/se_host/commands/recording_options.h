// The options for the engine's input.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tools/se_host/sound/recording.h"

namespace se_host {

// --far-end and --far-end-channel; both need a recording.
void addFarEnd(CLI::App& command, RecordingOptions& options);

// The source of the far end as a text; empty: none.
std::string farEndText(const RecordingOptions& options);

}  // namespace se_host
