// The command-line options that describe a scene, and the scene that they make.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tools/scene/scene.h"

namespace se_host {

inline constexpr double kDeviceModelRadius = 0.035;  // metres, for the device with its own build

// Registers every option that goes into `options` as it is.
void addSceneOptions(CLI::App& command, se_scene::SceneOptions& options);

// The microphones of an array file, for a scene. fails: Failure.
std::vector<se_scene::MicrophonePlace> circleOf(const std::string& path);

// The scene. fails: UsageError, which names the flag of the invalid option.
se_scene::Scene simulate(const se_scene::SceneOptions& options);

}  // namespace se_host
