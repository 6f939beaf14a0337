#include "tests/pipewire/pods.h"

#include <spa/param/props.h>
#include <spa/pod/iter.h>
#include <spa/pod/parser.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace se_pipewire_test {
namespace {

// Room for a few hundred parameters.
class Memory {
  public:
    Memory() : bytes_(1U << 18U) {
        spa_pod_builder_init(&builder_, bytes_.data(), static_cast<uint32_t>(bytes_.size() * 8));
    }

    spa_pod_builder* builder() { return &builder_; }
    const spa_pod* pod() const { return reinterpret_cast<const spa_pod*>(bytes_.data()); }

  private:
    std::vector<uint64_t> bytes_;
    spa_pod_builder builder_{};
};

double numberOf(uint32_t type, const void* body) {
    switch (type) {
        case SPA_TYPE_Bool:
        case SPA_TYPE_Int:
            return *static_cast<const int32_t*>(body);
        case SPA_TYPE_Long:
            return static_cast<double>(*static_cast<const int64_t*>(body));
        case SPA_TYPE_Float:
            return static_cast<double>(*static_cast<const float*>(body));
        default:
            throw std::runtime_error("a parameter of type " + std::to_string(type));
    }
}

std::string textOf(const spa_pod* pod) {
    const char* text = nullptr;
    if (spa_pod_get_string(pod, &text) == 0) return text;
    char number[32];
    std::snprintf(number, sizeof number, "%g", numberOf(pod->type, pod + 1));
    return number;
}

const spa_pod& propOf(const spa_pod* object, uint32_t key) {
    const spa_pod_prop* const prop = spa_pod_find_prop(object, nullptr, key);
    if (prop == nullptr) throw std::runtime_error("a description lacks property " + std::to_string(key));
    return prop->value;
}

void readRange(const spa_pod& range, Description* description) {
    uint32_t count = 0;
    uint32_t choice = 0;
    const spa_pod* const first = spa_pod_get_values(&range, &count, &choice);
    description->type = first->type;
    const auto* body = reinterpret_cast<const char*>(first + 1);
    for (uint32_t i = 0; i < count; ++i, body += first->size) {
        description->numbers.push_back(numberOf(first->type, body));
    }
}

}  // namespace

int descriptionCount(const Plugin& plugin) {
    return plugin.methods().enum_props(plugin.object(), 0, nullptr);
}

Description description(const Plugin& plugin, int index) {
    Memory memory;
    if (plugin.methods().enum_props(plugin.object(), index, memory.builder()) < 0)
        throw std::runtime_error("there is no parameter " + std::to_string(index));
    const spa_pod* const object = memory.pod();
    Description found;
    found.name = textOf(&propOf(object, SPA_PROP_INFO_name));
    found.help = textOf(&propOf(object, SPA_PROP_INFO_description));
    readRange(propOf(object, SPA_PROP_INFO_type), &found);
    spa_pod_get_bool(&propOf(object, SPA_PROP_INFO_params), &found.is_param);
    return found;
}

Description description(const Plugin& plugin, const std::string& name) {
    for (int i = 0; i < descriptionCount(plugin); ++i) {
        Description one = description(plugin, i);
        if (one.name == name) return one;
    }
    throw std::runtime_error("there is no parameter " + name);
}

Values values(const Plugin& plugin) {
    Memory memory;
    spa_pod_frame frame;
    spa_pod_builder_push_struct(memory.builder(), &frame);
    plugin.methods().get_params(plugin.object(), memory.builder());
    spa_pod_builder_pop(memory.builder(), &frame);

    Values all;
    spa_pod_parser parser;
    spa_pod_parser_pod(&parser, memory.pod());
    spa_pod_parser_push_struct(&parser, &frame);
    const char* name = nullptr;
    spa_pod* item = nullptr;
    while (spa_pod_parser_get_string(&parser, &name) == 0 && spa_pod_parser_get_pod(&parser, &item) == 0) {
        all.emplace_back(name, textOf(item));
    }
    return all;
}

std::string value(const Plugin& plugin, const std::string& name) {
    const Values all = values(plugin);
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.first == name; });
    return found == all.end() ? "none" : found->second;
}

int set(const Plugin& plugin, const std::function<void(spa_pod_builder*)>& write) {
    Memory memory;
    spa_pod_frame frame;
    spa_pod_builder_push_struct(memory.builder(), &frame);
    write(memory.builder());
    spa_pod_builder_pop(memory.builder(), &frame);
    return plugin.methods().set_params(plugin.object(), memory.pod());
}

}  // namespace se_pipewire_test
