#include "host/settings.h"

namespace se_host {
namespace {

struct Other {
    const char* name;
    const char* type;
    const char* help;
    bool writable;
    double lowest;
    double highest;
};

// Beside the diagnostics.
constexpr Other kOthers[] = {
    {"aec_bypass", "Bool", "Whether echo cancellation is bypassed", true, 0, 1},
    {"noise_reduction_bypass", "Bool", "Whether noise reduction is bypassed", true, 0, 1},
    {"location", "UInt16", "The look direction, in steps of 30 degrees", false, 0, 65535},
    {"location_conf", "Int16", "The confidence in the look direction, 0 to 32767", false, -32768, 32767},
};

Setting settingOf(const DiagInfo& diag) {
    return {diag.name,
            diag.path,
            diag.kind->name,
            diag.help,
            static_cast<unsigned>(diag.length),
            diag.writable && !diag.isArray() && diag.kind->type != SE_DIAG_TYPE_NONE,
            diag.kind->lowest,
            diag.kind->highest};
}

}  // namespace

std::vector<Setting> settingsOf(Host& host) {
    std::vector<Setting> settings;
    for (const DiagInfo& diag : host.diags()) settings.push_back(settingOf(diag));
    for (const Other& other : kOthers) {
        if (!host.get(other.name)) continue;
        settings.push_back(
            {other.name, other.name, other.type, other.help, 1, other.writable, other.lowest, other.highest});
    }
    return settings;
}

}  // namespace se_host
