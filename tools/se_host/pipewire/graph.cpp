#include "tools/se_host/pipewire/graph.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace se_host {
namespace {

using Json = nlohmann::json;

constexpr double kDefaultRate = 48000;

const Json& member(const Json& json, const char* name) {
    static const Json nothing;
    const auto found = json.is_object() ? json.find(name) : json.end();
    return json.is_object() && found != json.end() ? *found : nothing;
}

std::string text(const Json& json, const char* name) {
    const Json& value = member(json, name);
    return value.is_string() ? value.get<std::string>() : std::string();
}

int64_t number(const Json& json, const char* name) {
    const Json& value = member(json, name);
    return value.is_number_integer() ? value.get<int64_t>() : -1;
}

// Of "480/16000".
std::optional<double> secondsOf(const std::string& latency) {
    double frames = 0;
    double rate = 0;
    if (std::sscanf(latency.c_str(), "%lf/%lf", &frames, &rate) != 2 || rate <= 0) return std::nullopt;
    return frames / rate;
}

// The parameter of this name among those of a node: names and values in turn.
std::string parameter(const Json& info, const std::string& name) {
    for (const Json& props : member(member(info, "params"), "Props")) {
        const Json& all = member(props, "params");
        for (size_t i = 0; all.is_array() && i + 1 < all.size(); i += 2) {
            if (all[i] == name && all[i + 1].is_string()) return all[i + 1].get<std::string>();
        }
    }
    return {};
}

GraphNode nodeOf(const Json& object) {
    const Json& info = member(object, "info");
    const Json& props = member(info, "props");
    GraphNode node{};
    node.id = number(object, "id");
    node.name = text(props, "node.name");
    node.shown_name = text(props, "node.description").empty() ? node.name : text(props, "node.description");
    node.media_class = text(props, "media.class");
    node.group = text(props, "node.link-group");
    node.engine = parameter(info, "se.engine");
    node.advice = parameter(info, "se.advice");
    node.latency = secondsOf(text(props, "node.latency"));
    return node;
}

// Frames or Hz from the metadata "settings": numbers, or texts of them.
std::map<std::string, double> settingsOf(const Json& object) {
    std::map<std::string, double> settings;
    for (const Json& row : member(object, "metadata")) {
        const Json& value = member(row, "value");
        if (value.is_number()) settings[text(row, "key")] = value.get<double>();
        double parsed = 0;
        if (value.is_string() &&
            std::sscanf(value.get_ref<const std::string&>().c_str(), "%lf", &parsed) == 1)
            settings[text(row, "key")] = parsed;
    }
    return settings;
}

double longestCycle(std::map<std::string, double> settings) {
    const double forced_rate = settings["clock.force-rate"];
    const double rate = forced_rate > 0 ? forced_rate : settings["clock.rate"];
    const double frames = std::max(settings["clock.force-quantum"], settings["clock.min-quantum"]);
    return frames / (rate > 0 ? rate : kDefaultRate);
}

}  // namespace

Graph graphOf(const Json& dump) {
    Graph graph;
    if (!dump.is_array()) return graph;
    for (const Json& object : dump) {
        const std::string type = text(object, "type");
        const Json& info = member(object, "info");
        if (type == "PipeWire:Interface:Node") graph.nodes.push_back(nodeOf(object));
        if (type == "PipeWire:Interface:Link")
            graph.links.push_back({number(info, "output-node-id"), number(info, "input-node-id")});
        if (type == "PipeWire:Interface:Metadata" &&
            text(member(object, "props"), "metadata.name") == "settings")
            graph.longest_cycle = longestCycle(settingsOf(object));
    }
    return graph;
}

}  // namespace se_host
