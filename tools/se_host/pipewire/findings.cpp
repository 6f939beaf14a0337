#include "tools/se_host/pipewire/findings.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>

#include "common/string_printf.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Sentences = std::vector<std::string>;

constexpr size_t kMicrophones = 7;

// The nodes of an echo canceller; null: there is none.
struct Canceller {
    const GraphNode* capture = nullptr;
    std::vector<const GraphNode*> microphones;  // its eight channels, and the first of them alone
    const GraphNode* sink = nullptr;
    const GraphNode* playback = nullptr;
};

std::vector<const GraphNode*> nodesWith(const Graph& graph, const std::string& group,
                                        const std::string& media_class) {
    std::vector<const GraphNode*> found;
    for (const GraphNode& node : graph.nodes) {
        if (node.group == group && node.media_class == media_class) found.push_back(&node);
    }
    return found;
}

const GraphNode* nodeWith(const Graph& graph, const std::string& group, const std::string& media_class) {
    const auto found = nodesWith(graph, group, media_class);
    return found.empty() ? nullptr : found.front();
}

Canceller cancellerIn(const Graph& graph) {
    const GraphNode* const ours = cancellerNode(graph);
    if (ours == nullptr) return {};
    return {nodeWith(graph, ours->group, "Stream/Input/Audio"), nodesWith(graph, ours->group, "Audio/Source"),
            nodeWith(graph, ours->group, "Audio/Sink"), nodeWith(graph, ours->group, "Stream/Output/Audio")};
}

const GraphNode* nodeOf(const Graph& graph, int64_t id) {
    const auto found = std::find_if(graph.nodes.begin(), graph.nodes.end(),
                                    [id](const GraphNode& node) { return node.id == id; });
    return found == graph.nodes.end() ? nullptr : &*found;
}

size_t linksInto(const Graph& graph, const GraphNode& node) {
    return static_cast<size_t>(std::count_if(graph.links.begin(), graph.links.end(),
                                             [&](const GraphLink& link) { return link.input == node.id; }));
}

// Whether a program, which is in no group, records one of these nodes.
bool isRecorded(const Graph& graph, const std::vector<const GraphNode*>& microphones) {
    return std::any_of(microphones.begin(), microphones.end(), [&](const GraphNode* microphone) {
        return std::any_of(graph.links.begin(), graph.links.end(), [&](const GraphLink& link) {
            const GraphNode* const listener = nodeOf(graph, link.input);
            return link.output == microphone->id && listener != nullptr && listener->group.empty();
        });
    });
}

bool isLinked(const Graph& graph, const GraphNode& output, const GraphNode& input) {
    return std::any_of(graph.links.begin(), graph.links.end(), [&](const GraphLink& link) {
        return link.output == output.id && link.input == input.id;
    });
}

bool isHeard(const Graph& graph, const GraphNode& node) {
    return std::any_of(graph.links.begin(), graph.links.end(),
                       [&](const GraphLink& link) { return link.output == node.id; });
}

void adviseOnMicrophones(const Graph& graph, const Canceller& canceller, Sentences* sentences) {
    const size_t links = linksInto(graph, *canceller.capture);
    if (links == 0) {
        sentences->push_back(
            "nothing is linked to the capture of the canceller; write the name of the microphone array "
            "(pw-cli ls Node) as target.object into capture.props");
    } else if (links < kMicrophones) {
        sentences->push_back(
            stringPrintf("only %zu channels are linked to the capture of the canceller; choose the profile "
                         "'Pro Audio' for the microphone array, so that all its channels come",
                         links));
    }
}

void adviseOnPrograms(const Graph& graph, const Canceller& canceller, Sentences* sentences) {
    if (!canceller.microphones.empty() && !isRecorded(graph, canceller.microphones)) {
        sentences->push_back("no program records '" + canceller.microphones.back()->shown_name +
                             "'; choose it as the microphone in the program");
    }
    if (canceller.playback != nullptr && !isHeard(graph, *canceller.playback)) {
        sentences->push_back(
            "the canceller plays to no loudspeaker; write its name (pw-cli ls Node) as target.object into "
            "playback.props");
    }
}

// Programs whose sound reaches a loudspeaker without having been the far end.
void adviseOnEcho(const Graph& graph, const Canceller& canceller, Sentences* sentences) {
    if (canceller.sink == nullptr) return;
    std::set<int64_t> named;
    for (const GraphLink& link : graph.links) {
        const GraphNode* const program = nodeOf(graph, link.output);
        const GraphNode* const device = nodeOf(graph, link.input);
        if (program == nullptr || device == nullptr || program->media_class != "Stream/Output/Audio")
            continue;
        if (program->group == canceller.sink->group || device->media_class != "Audio/Sink") continue;
        if (device->id == canceller.sink->id || isLinked(graph, *device, *canceller.capture)) continue;
        if (!named.insert(program->id).second) continue;
        sentences->push_back("'" + program->shown_name + "' plays to '" + device->shown_name +
                             "', past the canceller, and its echo stays; choose '" +
                             canceller.sink->shown_name + "' in that program");
    }
}

void adviseOnCycle(const Graph& graph, const Canceller& canceller, Sentences* sentences) {
    const auto latency = canceller.capture->latency;
    if (!latency || graph.longest_cycle <= *latency) return;
    sentences->push_back(stringPrintf(
        "a cycle of the sound graph is %.1f ms, longer than node.latency of the canceller, %.1f ms, and "
        "sound is lost; "
        "write node.latency = %.0f/16000",
        graph.longest_cycle * 1000, *latency * 1000, std::ceil(graph.longest_cycle * 100) * 160));
}

void addAdvice(const GraphNode& node, Sentences* sentences) {
    std::istringstream lines(node.advice);
    for (std::string line; std::getline(lines, line);) sentences->push_back(line);
}

}  // namespace

const GraphNode* cancellerNode(const Graph& graph) {
    const auto ours = std::find_if(graph.nodes.begin(), graph.nodes.end(),
                                   [](const GraphNode& node) { return !node.engine.empty(); });
    return ours == graph.nodes.end() ? nullptr : &*ours;
}

std::vector<std::string> findingsIn(const Graph& graph) {
    const Canceller canceller = cancellerIn(graph);
    if (canceller.capture == nullptr) {
        return {
            "no echo canceller of ours runs; start it with 'systemctl --user start se-echo-cancel', and when "
            "it "
            "ends, 'journalctl --user -u se-echo-cancel' says why"};
    }
    Sentences sentences;
    adviseOnMicrophones(graph, canceller, &sentences);
    adviseOnPrograms(graph, canceller, &sentences);
    adviseOnEcho(graph, canceller, &sentences);
    adviseOnCycle(graph, canceller, &sentences);
    addAdvice(*canceller.capture, &sentences);
    return sentences;
}

}  // namespace se_host
