// Why there is no sound or no cancelling in PipeWire.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/pipewire/graph.h"

namespace se_host {

// A node of our echo canceller, with its parameters; null: there is none.
const GraphNode* cancellerNode(const Graph& graph);

// What is wrong and what to do, a sentence each; empty when nothing is.
std::vector<std::string> findingsIn(const Graph& graph);

}  // namespace se_host
