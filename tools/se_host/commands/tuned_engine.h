// A started engine with its diagnostics, after the tuning and the recording of the options. Shared by the commands
// of `se_host diags`.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string>

#include "host/diags/diag_tree.h"
#include "host/diags/tuning.h"
#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/commands/setting_check.h"
#include "tools/se_host/engine/engine_choice.h"
#include "tools/se_host/sound/recording.h"

namespace se_host {

struct DiagsOptions {
    EngineChoice engine;
    RecordingOptions recording;  // no input: none is processed
    std::string tuning;          // applied first; empty: none
    OnDifference on_difference = OnDifference::kStatus;
};

// --tuning, those of addEngineChoice and of addOnDifference.
void addEngineAndTuning(CLI::App& command, DiagsOptions& options);

// --recording, and those of addFarEnd.
void addRecording(CLI::App& command, DiagsOptions& options);

struct TunedEngine {
    Engine engine;
    DiagTree tree;
};

// Starts the engine, applies the tuning (mismatches go to standard error) and processes the recording.
// `after_block` runs after each block. fails: UsageError, Failure, SettingsDiffer.
std::unique_ptr<TunedEngine> startTuned(const DiagsOptions& options);
void processWith(const DiagsOptions& options, TunedEngine& tuned,
                 const std::function<void(size_t block)>& after_block = {});

// Applies a tuning file to a started engine; mismatches go to standard error. fails: Failure, SettingsDiffer.
void tuneFromFile(const std::string& path, const Engine& engine, DiagTree& tree, OnDifference on_difference);

}  // namespace se_host
