// The C interface: arguments are checked, exceptions become a status and a line of text.
#include "host/se_host.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "host/border/health.h"
#include "host/border/log.h"
#include "host/border/one_handle.h"
#include "host/border/options.h"
#include "host/border/sized_struct.h"
#include "host/border/why.h"
#include "host/engine/array_setting.h"
#include "host/host.h"
#include "host/settings.h"

struct se_host_t {
    explicit se_host_t(const se_host::HostOptions& options) : host(options) {}

    se_host::Host host;
    std::vector<se_host::Setting> settings;
    bool has_log = false;
};

namespace {

using se_host::copyText;
using se_host::fill;
using se_host::guarded;
using se_host::Host;
using se_host::known;
using se_host::Log;
using se_host::OneHandle;
using se_host::Why;

void giveArrayOf(const se_host_options_t& options) {
    if (options.array == nullptr) return se_host::takeArrayBack();
    se_host::giveArray(options.array);
}

se_host_status_t open(const se_host_options_t& options, std::unique_ptr<se_host_t>* host, const Why& why) {
    const se_host::HostOptions wanted = se_host::hostOptionsOf(options);
    se_host_status_t status = guarded(why, SE_HOST_BAD_FILE, [&] {
        giveArrayOf(options);
        return SE_HOST_OK;
    });
    if (status != SE_HOST_OK) return status;
    status = guarded(why, SE_HOST_BAD_ENGINE, [&] {
        *host = std::make_unique<se_host_t>(wanted);
        if (options.array != nullptr) se_host::requireArrayInUse();
        return SE_HOST_OK;
    });
    if (status != SE_HOST_OK || wanted.tuning.empty()) return status;
    return guarded(why, SE_HOST_BAD_FILE, [&] {
        const std::string difference = (*host)->host.tune(wanted.tuning);
        return difference.empty() ? SE_HOST_OK : why(SE_HOST_DIFFERS, difference);
    });
}

bool fits(Host& host, uint32_t channels, bool far_end_apart, size_t frames) {
    const uint32_t quantum = std::max(host.quantum(), uint32_t{1});
    return channels >= host.wiring().channels(far_end_apart) && channels <= SE_HOST_MOST_CHANNELS &&
           frames % quantum == 0;
}

template <class Input, class Sample>
se_host_status_t process(se_host_t* host, const Input& captured, const Sample* far_end, size_t frames,
                         Sample* mono) {
    if (!fits(host->host, captured.channels, far_end != nullptr, frames)) return SE_HOST_BAD_ARGUMENT;
    return host->host.audio().run(captured, far_end, frames, mono) ? SE_HOST_OK : SE_HOST_FAILED;
}

bool isAnyNull(const float* const* planes, uint32_t channels) {
    return std::any_of(planes, planes + channels, [](const float* plane) { return plane == nullptr; });
}

se_host_status_t statusOf(se_host::Refusal::Kind kind) {
    switch (kind) {
        case se_host::Refusal::Kind::kUnknown:
            return SE_HOST_UNKNOWN;
        case se_host::Refusal::Kind::kValue:
            return SE_HOST_REFUSED;
        case se_host::Refusal::Kind::kFull:
            return SE_HOST_FULL;
    }
    return SE_HOST_FAILED;
}

se_host_status_t nullPointer(const Why& why) {
    return why(SE_HOST_BAD_ARGUMENT, "a pointer is null; give what se_host.h asks for");
}

constexpr const char* kStatusTexts[] = {
    "done",
    "the call cannot be meant",
    "there is no such engine build, or it cannot be used",
    "the process has a handle or another engine already",
    "the file cannot be read or written, or is not what it should be",
    "the engine has no such setting",
    "the setting is read-only, or takes other values",
    "too many edits wait for the next blocks",
    "done, but the engine does not hold all settings as asked for",
    "there is no memory left, or the engine threw an exception",
};
static_assert(std::size(kStatusTexts) == SE_HOST_FAILED + 1);

}  // namespace

extern "C" {

se_host_status_t se_host_open(const se_host_options_t* options, se_host_t** host, char* why,
                              size_t why_size) {
    const Why says(why, why_size);
    if (host != nullptr) *host = nullptr;
    if (options == nullptr || host == nullptr) return nullPointer(says);
    const se_host_options_t all = known(options, se_host_options_t SE_HOST_OPTIONS_INIT);
    return guarded(says, SE_HOST_FAILED, [&] {
        const std::string objection = se_host::objectionTo(all);
        if (!objection.empty()) return says(SE_HOST_BAD_ARGUMENT, objection);
        OneHandle one;
        if (!one.taken()) return says(SE_HOST_IN_USE, "this process has an open handle; close it first");
        Log log(all);
        std::unique_ptr<se_host_t> opened;
        const se_host_status_t status = open(all, &opened, says);
        if (status != SE_HOST_OK && status != SE_HOST_DIFFERS) return status;
        opened->host.begin();
        opened->settings = se_host::settingsOf(opened->host);
        opened->has_log = log.keep();
        one.keep();
        *host = opened.release();
        return status;
    });
}

void se_host_close(se_host_t* host) {
    if (host == nullptr) return;
    if (host->has_log) Log::giveBack();
    delete host;
    OneHandle::release();
}

uint32_t se_host_latency(const se_host_t* host) {
    return host == nullptr ? 0 : se_host::latencyOf(host->host.quantum());
}

se_host_status_t se_host_process_i16(se_host_t* host, const int16_t* captured, uint32_t channels,
                                     const int16_t* far_end, size_t frames, int16_t* mono) {
    if (host == nullptr || captured == nullptr || mono == nullptr) return SE_HOST_BAD_ARGUMENT;
    return process(host, se_host::Interleaved<int16_t>{captured, channels}, far_end, frames, mono);
}

se_host_status_t se_host_process_f32(se_host_t* host, const float* captured, uint32_t channels,
                                     const float* far_end, size_t frames, float* mono) {
    if (host == nullptr || captured == nullptr || mono == nullptr) return SE_HOST_BAD_ARGUMENT;
    return process(host, se_host::Interleaved<float>{captured, channels}, far_end, frames, mono);
}

se_host_status_t se_host_process_planes_f32(se_host_t* host, const float* const* captured, uint32_t channels,
                                            const float* far_end, size_t frames, float* mono) {
    if (host == nullptr || captured == nullptr || mono == nullptr) return SE_HOST_BAD_ARGUMENT;
    if (channels > SE_HOST_MOST_CHANNELS || isAnyNull(captured, channels)) return SE_HOST_BAD_ARGUMENT;
    return process(host, se_host::Planes<float>{captured, channels}, far_end, frames, mono);
}

void se_host_clock(se_host_t* host, uint64_t nanoseconds) {
    if (host != nullptr) host->host.audio().clock(nanoseconds);
}

void se_host_bypass(se_host_t* host, int bypass) {
    if (host != nullptr) host->host.audio().bypass(bypass != 0);
}

se_host_status_t se_host_set(se_host_t* host, const char* name, const char* value, char* why,
                             size_t why_size) {
    const Why says(why, why_size);
    if (host == nullptr || name == nullptr || value == nullptr) return nullPointer(says);
    return guarded(says, SE_HOST_FAILED, [&] {
        const auto refusal = host->host.set(name, value);
        return refusal ? says(statusOf(refusal->kind), refusal->why) : SE_HOST_OK;
    });
}

se_host_status_t se_host_get(se_host_t* host, const char* name, char* value, size_t size, size_t* length) {
    const Why text(value, size);
    if (length != nullptr) *length = 0;
    if (host == nullptr || name == nullptr) return SE_HOST_BAD_ARGUMENT;
    return guarded(Why(nullptr, 0), SE_HOST_FAILED, [&] {
        const auto found = host->host.get(name);
        if (!found) return SE_HOST_UNKNOWN;
        if (length != nullptr) *length = found->size();
        copyText(*found, value, size);
        return SE_HOST_OK;
    });
}

size_t se_host_setting_count(const se_host_t* host) {
    return host == nullptr ? 0 : host->settings.size();
}

se_host_status_t se_host_setting(const se_host_t* host, size_t place, se_host_setting_t* setting) {
    if (host == nullptr || setting == nullptr || place >= host->settings.size()) return SE_HOST_BAD_ARGUMENT;
    const se_host::Setting& found = host->settings[place];
    fill(setting, {sizeof(se_host_setting_t), found.name.c_str(), found.path.c_str(), found.type.c_str(),
                   found.help.c_str(), found.elements, found.writable ? 1 : 0, found.lowest, found.highest});
    return SE_HOST_OK;
}

se_host_status_t se_host_load_tuning(se_host_t* host, const char* path, char* why, size_t why_size) {
    const Why says(why, why_size);
    if (host == nullptr || path == nullptr) return nullPointer(says);
    return guarded(says, SE_HOST_BAD_FILE, [&] {
        const Host::Loaded loaded = host->host.loadTuning(path);
        if (loaded.full)
            return says(SE_HOST_FULL, "too many edits wait for the next blocks; try again after some");
        return loaded.difference.empty() ? SE_HOST_OK : says(SE_HOST_DIFFERS, loaded.difference);
    });
}

se_host_status_t se_host_save_tuning(se_host_t* host, const char* path, char* why, size_t why_size) {
    const Why says(why, why_size);
    if (host == nullptr || path == nullptr) return nullPointer(says);
    return guarded(says, SE_HOST_BAD_FILE, [&] {
        host->host.saveTuning(path);
        return SE_HOST_OK;
    });
}

se_host_status_t se_host_health(se_host_t* host, se_host_health_t* health) {
    if (host == nullptr || health == nullptr) return SE_HOST_BAD_ARGUMENT;
    return guarded(Why(nullptr, 0), SE_HOST_FAILED, [&] {
        fill(health, se_host::shownOf(host->host.health()));
        return SE_HOST_OK;
    });
}

size_t se_host_advice(se_host_t* host, char* text, size_t size) {
    const Why empty(text, size);
    if (host == nullptr) return 0;
    size_t count = 0;
    guarded(Why(nullptr, 0), SE_HOST_FAILED, [&] {
        std::string lines;
        const std::vector<std::string> sentences = se_host::adviceOn(host->host.health());
        for (const std::string& sentence : sentences) lines += (lines.empty() ? "" : "\n") + sentence;
        copyText(lines, text, size);
        count = sentences.size();
        return SE_HOST_OK;
    });
    return count;
}

const char* se_host_engine_build(const se_host_t* host) {
    return host == nullptr ? "" : host->host.engine().build.c_str();
}

const char* se_host_engine_version(const se_host_t* host) {
    return host == nullptr ? "" : host->host.engine().version.c_str();
}

const char* se_host_version(void) {
    return SE_HOST_VERSION;
}

const char* se_host_status_text(int status) {
    const auto number = static_cast<size_t>(status);
    return number < std::size(kStatusTexts) ? kStatusTexts[number] : "unknown status";
}

}  // extern "C"
