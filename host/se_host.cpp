// The C interface: arguments are checked, exceptions become a status and a line of text.
#include "host/se_host.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "common/logging.h"
#include "host/engine/array_setting.h"
#include "host/host.h"
#include "host/output/one_line.h"
#include "host/settings.h"

struct se_host_t {
    explicit se_host_t(const se_host::HostOptions& options) : host(options) {}

    se_host::Host host;
    std::vector<se_host::Setting> settings;
    bool has_log = false;
};

namespace {

using se_host::Host;
using se_host::Wiring;

// The handle of this process, from the beginning of its opening on.
std::mutex g_mutex;
bool g_is_open = false;

class OneHandle {
  public:
    OneHandle() {
        const std::lock_guard lock(g_mutex);
        taken_ = !g_is_open;
        g_is_open = true;
    }
    ~OneHandle() {
        if (taken_) release();
    }
    OneHandle(const OneHandle&) = delete;
    OneHandle& operator=(const OneHandle&) = delete;

    bool taken() const { return taken_; }
    void keep() { taken_ = false; }

    static void release() {
        const std::lock_guard lock(g_mutex);
        g_is_open = false;
    }

  private:
    bool taken_;
};

// Cut to `size` bytes with the terminating 0.
void copyText(const std::string& text, char* to, size_t size) {
    if (to == nullptr || size == 0) return;
    const size_t length = std::min(text.size(), size - 1);
    std::memcpy(to, text.data(), length);
    to[length] = '\0';
}

// Where a function says why it failed.
class Why {
  public:
    Why(char* text, size_t size) : text_(text), size_(size) { copyText({}, text, size); }

    se_host_status_t operator()(se_host_status_t status, const std::string& text) const {
        copyText(se_output::oneLine(text), text_, size_);
        return status;
    }

  private:
    char* text_;
    size_t size_;
};

// Runs `call`; an exception is `status`, and a lack of memory SE_HOST_FAILED.
template <class Call>
se_host_status_t guarded(const Why& why, se_host_status_t status, const Call& call) {
    try {
        return call();
    } catch (const se_host::EngineInUse& error) {
        return why(SE_HOST_IN_USE, error.what());
    } catch (const std::bad_alloc&) {
        return why(SE_HOST_FAILED, "there is no memory left; end other programs");
    } catch (const std::exception& error) {
        return why(status, error.what());
    }
}

// The fields that a caller's struct of an earlier or later version has, the defaults for others.
template <class Struct>
Struct known(const Struct* given, const Struct& defaults) {
    Struct all = defaults;
    std::memcpy(&all, given, std::min(given->size, sizeof(Struct)));
    all.size = sizeof(Struct);
    return all;
}

// The other way; the caller's size stays.
template <class Struct>
void fill(Struct* to, const Struct& from) {
    const size_t size = to->size;
    std::memcpy(to, &from, std::min(size, sizeof(Struct)));
    to->size = size;
}

std::string textOr(const char* text) {
    return text == nullptr ? std::string() : text;
}

se_host::EngineOptions engineOptionsOf(const se_host_options_t& options) {
    se_host::EngineOptions engine;
    const std::string build = textOr(options.engine);
    (build.find('/') == std::string::npos ? engine.build : engine.file) = build;
    engine.folder = textOr(options.folder);
    engine.device_model = options.device_model != 0;
    return engine;
}

se_host::HostOptions hostOptionsOf(const se_host_options_t& options) {
    se_host::HostOptions host{engineOptionsOf(options), textOr(options.tuning), options.quantum, {}};
    std::copy(std::begin(options.microphones), std::end(options.microphones),
              host.wiring.microphones.begin());
    host.wiring.far_end = options.far_end_channel;
    return host;
}

bool isChannel(int32_t channel) {
    return channel >= Wiring::kNone && channel < SE_HOST_MOST_CHANNELS;
}

// Empty: nothing.
std::string objectionTo(const se_host_options_t& options) {
    if (options.sample_rate != 0 && options.sample_rate != SE_HOST_SAMPLE_RATE) {
        return "the engine works at 16000 Hz, not at " + std::to_string(options.sample_rate) +
               "; resample before and after it, as the sound server or 'se_host process' do";
    }
    const bool channels_exist =
        std::all_of(std::begin(options.microphones), std::end(options.microphones), isChannel) &&
        isChannel(options.far_end_channel);
    if (channels_exist) return {};
    return "a channel is from 0 to " + std::to_string(SE_HOST_MOST_CHANNELS - 1) + ", or -1 for none";
}

// The caller's log, and standard error again unless the handle keeps it.
class Log {
  public:
    explicit Log(const se_host_options_t& options) : taken_(options.log != nullptr) {
        if (taken_) take(options);
    }
    ~Log() {
        if (taken_) giveBack();
    }
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    bool keep() { return std::exchange(taken_, false); }
    static void giveBack() { quill::setLogSink({}); }

  private:
    static void take(const se_host_options_t& options);

    bool taken_;
};

void Log::take(const se_host_options_t& options) {
    quill::setLogSink([log = options.log, context = options.log_context](const quill::LogRecord& record) {
        log(context, record.level, record.tag, record.text.c_str());
    });
}

void giveArrayOf(const se_host_options_t& options) {
    if (options.array == nullptr) return se_host::takeArrayBack();
    se_host::giveArray(options.array);
}

se_host_status_t open(const se_host_options_t& options, std::unique_ptr<se_host_t>* host, const Why& why) {
    const se_host::HostOptions wanted = hostOptionsOf(options);
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

void showClock(const se_host::Health& health, se_host_health_t* shown) {
    if (!health.clock) return;
    shown->valid |= SE_HOST_HAS_CLOCK;
    shown->missing_frames = health.clock->missing_frames;
    shown->late_calls = health.clock->late_calls;
}

void showLevels(const se_host::Health& health, se_host_health_t* shown) {
    if (!health.levels) return;
    shown->valid |= SE_HOST_HAS_LEVELS;
    shown->far_end_dbfs = health.levels->far_end_dbfs;
    for (size_t i = 0; i < SE_HOST_MICROPHONES; ++i) {
        shown->microphone_dbfs[i] = health.levels->microphones[i].dbfs;
        shown->microphone_dead[i] = health.levels->microphones[i].dead ? 1 : 0;
    }
}

void showEchoDelay(const se_host::Health& health, se_host_health_t* shown) {
    if (!health.echo_delay) return;
    shown->valid |= SE_HOST_HAS_ECHO_DELAY;
    shown->echo_delay_ms = health.echo_delay->ms;
    shown->echo_delay_confidence = health.echo_delay->confidence;
}

void showTimes(const se_host::Health& health, se_host_health_t* shown) {
    if (!health.times) return;
    shown->valid |= SE_HOST_HAS_BLOCK_TIMES;
    shown->block_mean_us = health.times->mean;
    shown->block_999_us = health.times->p999;
    shown->block_worst_us = health.times->worst;
}

se_host_health_t shownOf(const se_host::Health& health) {
    se_host_health_t shown{};
    shown.frames = health.frames;
    shown.blocks = health.blocks;
    shown.bypassed_blocks = health.bypassed_blocks;
    shown.failed_blocks = health.failed_blocks;
    shown.edits_applied = health.edits_applied;
    shown.edits_dropped = health.edits_dropped;
    shown.far_end_silent_seconds = health.far_end_silent_seconds;
    std::copy(health.clipped.begin(), health.clipped.end(), shown.microphone_clipped);
    showClock(health, &shown);
    showLevels(health, &shown);
    showEchoDelay(health, &shown);
    showTimes(health, &shown);
    return shown;
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
        const std::string objection = objectionTo(all);
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
        fill(health, shownOf(host->host.health()));
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
