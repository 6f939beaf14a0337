// The command-line options that describe a scene, and its refusals in terms of these options.
// Threads: one.
#pragma once

#include <CLI/CLI.hpp>
#include <stdexcept>
#include <string>

#include "tools/scene/scene.h"

namespace se_host {

// Registers every option that goes into `options` as it is.
void addSceneOptions(CLI::App& command, se_scene::SceneOptions& options);

// A refusal of the scene names one of its options; the user knows it by its flag.
std::string inTermsOfFlags(const std::invalid_argument& refusal);

}  // namespace se_host
