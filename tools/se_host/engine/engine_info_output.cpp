// The two forms of `se_host info`'s answer.
#include "common/dynlib.h"
#include "common/string_printf.h"
#include "tools/se_host/engine/engine_info.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;

std::string line(const char* label, const std::string& text) {
    return stringPrintf("%-12s", label) + text + "\n";
}

std::string namesOfPresent(const std::vector<Presence>& all) {
    std::string names;
    for (const Presence& one : all) {
        if (one.present) names += (names.empty() ? "" : ", ") + one.name;
    }
    return names.empty() ? "none" : names;
}

std::string presenceLines(const std::vector<Presence>& all) {
    std::string text;
    for (const Presence& one : all)
        text += stringPrintf("  %-3s ", one.present ? "yes" : "no") + one.name + "\n";
    return text;
}

std::string propertyText(const PropertyLine& property) {
    return "  " + property.path + " = " + (property.value.empty() ? "\"\"" : property.value) + " (" +
           property.type + (property.read_only ? ", read-only)\n" : ")\n");
}

Json presenceJson(const std::vector<Presence>& all) {
    Json object = Json::object();
    for (const Presence& one : all) object[one.name] = one.present;
    return object;
}

std::string kernelText(const std::vector<KernelLine>& lines) {
    std::string text;
    for (const KernelLine& kernel : lines) {
        text += (text.empty() ? "" : ", ") + kernel.family + " " + kernel.variant;
    }
    return text;
}

Json kernelJson(const std::vector<KernelLine>& lines) {
    Json object = Json::object();
    for (const KernelLine& kernel : lines) object[kernel.family] = kernel.variant;
    return object;
}

Json propertyJson(const PropertyLine& property) {
    return {{"type", property.type}, {"value", property.value}, {"read_only", property.read_only}};
}

}  // namespace

std::string toText(const EngineInfo& info) {
    std::string text = line("engine", info.build + " (" + info.version + ")");
    text += line("offers", namesOfPresent(info.capabilities));
    text += line("folder", info.folder);
    text += line("builds", quill::join(info.builds.begin(), info.builds.end(), ", "));
    text += line("processor", namesOfPresent(info.processor_features));
    text += line("kernels", kernelText(info.kernels));
    text += "\noptional entry points of the engine\n" + presenceLines(info.optional_entry_points);
    text += "\nproperties\n";
    for (const PropertyLine& property : info.properties) text += propertyText(property);
    return text;
}

Json toJson(const EngineInfo& info) {
    Json properties = Json::object();
    for (const PropertyLine& property : info.properties) properties[property.path] = propertyJson(property);
    return {{"engine",
             {{"build", info.build},
              {"version", info.version},
              {"capabilities", presenceJson(info.capabilities)},
              {"optional_entry_points", presenceJson(info.optional_entry_points)}}},
            {"folder", info.folder},
            {"builds", info.builds},
            {"processor_features", presenceJson(info.processor_features)},
            {"kernels", kernelJson(info.kernels)},
            {"properties", properties}};
}

}  // namespace se_host
