#include "pipewire/parameters.h"

#include <spa/param/param.h>
#include <spa/param/props.h>
#include <spa/pod/parser.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <string_view>

#include "pipewire/values.h"

namespace se_pipewire {
namespace {

// Settings beside the engine's diagnostics stand in no folder and come first.
constexpr std::string_view kLevels[] = {"diags/basic/", "diags/intermediate/", "diags/advanced/",
                                        "diags/debug/"};

size_t levelOf(const se_host_setting_t& setting) {
    const std::string_view path = setting.path;
    const auto* const level =
        std::find_if(std::begin(kLevels), std::end(kLevels),
                     [&](std::string_view folder) { return path.substr(0, folder.size()) == folder; });
    return level == std::end(kLevels) ? 0 : static_cast<size_t>(level - std::begin(kLevels)) + 1;
}

bool isShown(const se_host_setting_t& setting) {
    return setting.writable != 0 && setting.elements == 1;
}

std::vector<se_host_setting_t> shownSettings(se_host_t* host) {
    std::vector<se_host_setting_t> settings;
    for (size_t place = 0; place < se_host_setting_count(host); ++place) {
        se_host_setting_t setting{};
        setting.size = sizeof setting;
        if (se_host_setting(host, place, &setting) == SE_HOST_OK && isShown(setting))
            settings.push_back(setting);
    }
    std::stable_sort(
        settings.begin(), settings.end(),
        [](const se_host_setting_t& a, const se_host_setting_t& b) { return levelOf(a) < levelOf(b); });
    return settings;
}

void addText(spa_pod_builder& builder, const char* name, const std::string& text) {
    spa_pod_builder_string(&builder, name);
    spa_pod_builder_string(&builder, text.c_str());
}

}  // namespace

Parameters::Parameters(se_host_t* host, const Log& log)
    : host_(host), log_(log), settings_(shownSettings(host)) {
    if (settings_.size() <= kMost) return;
    log_.info(
        std::to_string(settings_.size() - kMost) +
        " settings of the engine are not shown as parameters; they can be set by name and in a tuning file");
    settings_.resize(kMost);
}

std::string Parameters::value(const se_host_setting_t& setting) const {
    char text[128];
    size_t length = 0;
    se_host_get(host_, setting.path, text, sizeof text, &length);
    return text;
}

int Parameters::describe(int index, spa_pod_builder& builder) const {
    if (index < 0 || index >= count()) return -EINVAL;
    const se_host_setting_t& setting = settings_[static_cast<size_t>(index)];
    spa_pod_frame frame;
    spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_PropInfo, SPA_PARAM_PropInfo);
    spa_pod_builder_prop(&builder, SPA_PROP_INFO_name, 0);
    spa_pod_builder_string(&builder, setting.name);
    spa_pod_builder_prop(&builder, SPA_PROP_INFO_description, 0);
    spa_pod_builder_string(&builder, setting.help);
    spa_pod_builder_prop(&builder, SPA_PROP_INFO_type, 0);
    addRange(builder, setting, value(setting));
    spa_pod_builder_prop(&builder, SPA_PROP_INFO_params, 0);
    spa_pod_builder_bool(&builder, true);
    return spa_pod_builder_pop(&builder, &frame) == nullptr ? -ENOSPC : 0;
}

void Parameters::values(spa_pod_builder& builder) const {
    char advice[2048];
    se_host_advice(host_, advice, sizeof advice);
    addText(builder, "se.engine",
            std::string(se_host_engine_build(host_)) + " (" + se_host_engine_version(host_) + ")");
    addText(builder, "se.advice", advice);
    for (const se_host_setting_t& setting : settings_) {
        spa_pod_builder_string(&builder, setting.name);
        addValue(builder, setting, value(setting));
    }
}

int Parameters::set(const char* name, const std::string& value) {
    char why[512];
    const se_host_status_t status = se_host_set(host_, name, value.c_str(), why, sizeof why);
    if (status == SE_HOST_OK || status == SE_HOST_UNKNOWN) return 0;
    log_.warning(why);
    return status == SE_HOST_FULL ? -EAGAIN : -EINVAL;
}

int Parameters::set(const spa_pod* values) {
    if (values == nullptr) return -EINVAL;
    spa_pod_parser parser;
    spa_pod_frame frame;
    spa_pod_parser_pod(&parser, values);
    if (spa_pod_parser_push_struct(&parser, &frame) < 0) return -EINVAL;
    int result = 0;
    const char* name = nullptr;
    spa_pod* item = nullptr;
    while (spa_pod_parser_get_string(&parser, &name) == 0 && spa_pod_parser_get_pod(&parser, &item) == 0) {
        if (const auto text = textOf(item)) result = std::min(result, set(name, *text));
    }
    return result;
}

int Parameters::set(const spa_dict& values) {
    int result = 0;
    for (uint32_t i = 0; i < values.n_items; ++i) {
        const spa_dict_item& item = values.items[i];
        if (item.value != nullptr) result = std::min(result, set(item.key, item.value));
    }
    return result;
}

}  // namespace se_pipewire
