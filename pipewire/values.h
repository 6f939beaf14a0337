// Values as PipeWire's plain old data ("pods") and as the engine library's texts.
#pragma once

#include <spa/pod/builder.h>
#include <spa/pod/pod.h>

#include <optional>
#include <string>

#include "host/se_host.h"

namespace se_pipewire {

// The text of a pod as se_host_set takes it; nothing for a pod that is no single value.
std::optional<std::string> textOf(const spa_pod* pod);

// Adds a value, given as se_host_get returns it.
void addValue(spa_pod_builder& builder, const se_host_setting_t& setting, const std::string& text);

// Adds a value with its range, as SPA_PROP_INFO_type.
void addRange(spa_pod_builder& builder, const se_host_setting_t& setting, const std::string& text);

}  // namespace se_pipewire
