#include "tools/se_host/sweep/order.h"

#include "tools/se_host/sweep/program.h"

namespace se_host::sweep {
namespace {

Json hashOrNull(const std::string& path, FileHashes& files) {
    return path.empty() ? Json(nullptr) : Json(files.of(path));
}

}  // namespace

Json toJson(const EngineFile& engine) {
    return {{"file", engine.path},
            {"hash", engine.hash},
            {"build", engine.build},
            {"version", engine.version},
            {"device_model", engine.device_model},
            {"array", engine.array}};
}

EngineFile engineFileOf(const Json& json) {
    return {json.at("file"),    json.at("hash"),         json.at("build"),
            json.at("version"), json.at("device_model"), json.at("array")};
}

Json toJson(const Order& order) {
    return {{"key", order.key},
            {"recording", toJson(order.entry)},
            {"tuning", order.tuning},
            {"tuning_file", order.tuning_file},
            {"engine", toJson(order.engine)},
            {"over_time", order.over_time}};
}

Order orderOf(const Json& json) {
    return {json.at("key"),         entryOf(json.at("recording"), "/"), json.at("tuning"),
            json.at("tuning_file"), engineFileOf(json.at("engine")),    json.at("over_time")};
}

std::string keyOf(const Order& order, FileHashes& files) {
    Json inputs = Json::array();
    for (const std::string& file : filesOf(order.entry)) inputs.push_back(files.of(file));
    const RecordingOptions& recording = order.entry.recording;
    const Json content{{"inputs", inputs},
                       {"far_end_file", !recording.far_end_file.empty()},
                       {"far_end_channel", recording.far_end_channel.value_or(-1)},
                       {"channel_map", recording.channel_map},
                       {"tuning", hashOrNull(order.tuning_file, files)},
                       {"engine", files.of(order.engine.path)},
                       {"device_model", order.engine.device_model},
                       {"array", hashOrNull(order.engine.array, files)},
                       {"over_time", !order.over_time.empty()},
                       {"program", toJson(thisProgram())}};
    return hashOf(content.dump());
}

}  // namespace se_host::sweep
