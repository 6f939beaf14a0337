// What follows when the engine does not hold a setting as it was asked for: unknown, refused, or changed by the engine.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "host/output/errors.h"
#include "tools/se_host/engine/exit_status.h"

namespace se_host {

enum class OnDifference {
    kStatus,  // the work is done and the exit status is kSettingsDiffer
    kEnd,     // the same status, and nothing is written
    kAccept,  // a warning
};

// --strict and --lenient.
void addOnDifference(CLI::App& command, OnDifference& on_difference);

// Exit status kSettingsDiffer.
struct SettingsDiffer : se_output::Failure {
    using Failure::Failure;
};

// Lines on standard error.
void printWarnings(const std::vector<std::string>& lines);

// Notes that a setting differs, about which the user has read. fails: SettingsDiffer when that is to end the run.
void settingsDiffer(OnDifference on_difference);

// kDone or kSettingsDiffer.
ExitStatus settingStatus();

}  // namespace se_host
