// The loaded engine, the processor, the selected kernels and the properties, as `se_host info` shows them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/engine/engine.h"

namespace se_host {

struct Presence {
    std::string name;
    bool present;
};

struct PropertyLine {
    std::string path;
    std::string type;
    std::string value;
    bool read_only;
};

// A family of kernels and the build in use.
struct KernelLine {
    std::string family;
    std::string variant;
};

struct EngineInfo {
    std::string build;
    std::string version;
    std::vector<Presence> capabilities;
    std::vector<Presence> optional_entry_points;
    std::vector<Presence> processor_features;
    std::vector<KernelLine> kernels;
    std::string folder;               // of the engine builds
    std::vector<std::string> builds;  // that could be loaded instead
    std::vector<PropertyLine> properties;
};

// needs: a loaded engine.
EngineInfo gatherInfo(const Engine& engine);

// A few lines, the last one ended.
std::string toText(const EngineInfo& info);
nlohmann::ordered_json toJson(const EngineInfo& info);

}  // namespace se_host
