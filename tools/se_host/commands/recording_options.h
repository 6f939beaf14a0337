// The options for the engine's input.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "tools/se_host/sound/recording.h"

namespace se_host {

// --far-end, --far-end-channel and --channel-map; all need a recording.
void addFarEnd(CLI::App& command, RecordingOptions& options);
void addChannelMap(CLI::App& command, std::string& map);

// The source of the far end as a text; empty: none.
std::string farEndText(const RecordingOptions& options);

}  // namespace se_host
