// The options that choose an engine and set it up.
#pragma once

#include <CLI/CLI.hpp>

#include "tools/se_host/engine/engine_choice.h"

namespace se_host {

// --engine, --device-model, and those of addSupervision.
void addEngineChoice(CLI::App& command, EngineChoice& options);

// --array.
void addArray(CLI::App& command, std::string& array);

// --engine-timeout and --in-process.
void addSupervision(CLI::App& command, Supervision& supervision);

// --engine-routines, --engine-dft, --gain, --echo-safety-factor and --set.
void addEngineSettings(CLI::App& command, EngineOptions& options);

}  // namespace se_host
