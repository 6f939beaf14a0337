#include "tools/se_host/sweep/manifest.h"

#include <filesystem>
#include <set>

#include "host/output/errors.h"
#include "tools/se_host/sound/scene_parts.h"

namespace se_host::sweep {
namespace {

namespace fs = std::filesystem;
using se_output::Failure;

constexpr const char* kFields[] = {"id", "recording", "far_end", "channel_map", "parts"};

constexpr int kHighestChannel = 1023;  // more than any file has

bool isField(const std::string& name) {
    return std::find(std::begin(kFields), std::end(kFields), name) != std::end(kFields);
}

// Empty when it is not there.
std::string textField(const Json& json, const char* name) {
    if (!json.contains(name)) return {};
    if (!json[name].is_string()) throw Failure(std::string("'") + name + "' is not a text");
    return json[name].get<std::string>();
}

std::string neededText(const Json& json, const char* name) {
    const std::string text = textField(json, name);
    if (text.empty()) throw Failure(std::string("'") + name + "' is missing");
    return text;
}

std::string pathFrom(const std::string& folder, const std::string& path) {
    return path.empty() ? path : (fs::absolute(folder) / path).lexically_normal().string();
}

void readFarEnd(const Json& json, const std::string& folder, RecordingOptions* recording) {
    if (!json.contains("far_end")) return;
    const Json& far_end = json["far_end"];
    if (far_end.is_number_integer() && far_end >= 0 && far_end <= kHighestChannel) {
        recording->far_end_channel = far_end.get<int>();
    } else if (far_end.is_string()) {
        recording->far_end_file = pathFrom(folder, far_end.get<std::string>());
    } else {
        throw Failure("'far_end' is neither a file nor a channel");
    }
}

void requireMap(const std::string& map) {
    if (map.empty()) return;
    try {
        channelMapOf(map);
    } catch (const se_output::UsageError& refusal) {
        throw Failure(std::string("'channel_map': ") + refusal.what());
    }
}

void requireFiles(const Entry& entry) {
    for (const std::string& file : filesOf(entry)) {
        if (!fs::is_regular_file(file)) throw Failure("there is no file '" + file + "'");
    }
}

}  // namespace

Json toJson(const Entry& entry) {
    Json json{{"id", entry.id}, {"recording", entry.recording.input}};
    if (entry.recording.far_end_channel) json["far_end"] = *entry.recording.far_end_channel;
    if (!entry.recording.far_end_file.empty()) json["far_end"] = entry.recording.far_end_file;
    if (!entry.recording.channel_map.empty()) json["channel_map"] = entry.recording.channel_map;
    if (!entry.parts.empty()) json["parts"] = entry.parts;
    for (const auto& [name, value] : entry.labels.items()) json[name] = value;
    return json;
}

Entry entryOf(const Json& json, const std::string& folder) {
    Entry entry;
    entry.id = neededText(json, "id");
    entry.recording.input = pathFrom(folder, neededText(json, "recording"));
    entry.recording.channel_map = textField(json, "channel_map");
    requireMap(entry.recording.channel_map);
    readFarEnd(json, folder, &entry.recording);
    entry.parts = pathFrom(folder, textField(json, "parts"));
    for (const auto& [name, value] : json.items()) {
        if (isField(name)) continue;
        if (!value.is_primitive()) throw Failure("the label '" + name + "' is not a text or a number");
        entry.labels[name] = value;
    }
    return entry;
}

std::vector<Entry> readManifest(const std::string& path, bool with_files) {
    const std::string folder = fs::absolute(path).parent_path().string();
    std::vector<Entry> entries;
    std::set<std::string> ids;
    visitLines(path, textOf(path), [&](std::string_view line) {
        entries.push_back(entryOf(objectIn(line), folder));
        if (!ids.insert(entries.back().id).second)
            throw Failure("the id '" + entries.back().id + "' is used twice");
        if (with_files) requireFiles(entries.back());
    });
    if (entries.empty())
        throw Failure("'" + path + "' names no recording; 'se_host sweep manifest' writes one");
    return entries;
}

void writeManifest(se_output::OutputFile& file, const std::vector<Entry>& entries) {
    std::string text;
    for (const Entry& entry : entries) text += lineOf(toJson(entry));
    file.write(text);
}

std::vector<std::string> filesOf(const Entry& entry) {
    std::vector<std::string> files{entry.recording.input};
    if (!entry.recording.far_end_file.empty()) files.push_back(entry.recording.far_end_file);
    if (entry.parts.empty()) return files;
    const std::vector<std::string> parts = scenePartPaths(entry.parts);
    files.insert(files.end(), parts.begin(), parts.end());
    return files;
}

}  // namespace se_host::sweep
