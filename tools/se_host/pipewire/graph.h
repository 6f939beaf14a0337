// What a PipeWire daemon knows, as far as the echo canceller needs it: nodes, links between them, the clock.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace se_host {

struct GraphNode {
    int64_t id;
    std::string name;
    std::string shown_name;  // description, or else the name
    std::string media_class;
    std::string group;              // node.link-group; the four nodes of a canceller have the same
    std::string engine;             // of our canceller; empty: another node
    std::string advice;             // what the canceller found, a sentence a line
    std::optional<double> latency;  // seconds
};

// From a port to a port: a link of eight channels is eight of them.
struct GraphLink {
    int64_t output;  // nodes
    int64_t input;
};

struct Graph {
    std::vector<GraphNode> nodes;
    std::vector<GraphLink> links;
    double longest_cycle = 0;  // seconds, when the settings force one; 0: they do not
};

// Of the output of pw-dump. Members that are missing or of another type are passed over.
Graph graphOf(const nlohmann::json& dump);

}  // namespace se_host
