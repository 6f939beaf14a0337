// The plugin as PipeWire loads it: one factory, whose handles have the interface of an echo canceller.
// Nothing is thrown out of it.
#include <spa/support/log.h>
#include <spa/support/plugin.h>
#include <spa/utils/hook.h>
#include <spa/utils/names.h>
#include <spa/utils/string.h>

#include <cerrno>
#include <iterator>
#include <new>

#include "pipewire/aec_methods.h"
#include "pipewire/canceller.h"

namespace {

using se_pipewire::AecMethods;
using se_pipewire::Canceller;
using se_pipewire::Log;
using se_pipewire::Parameters;
using se_pipewire::Streams;

// What PipeWire calls a handle, with the object behind it.
struct Handle : spa_handle {
    explicit Handle(const Log& log) : canceller(log) { spa_hook_list_init(&listeners); }

    spa_audio_aec interface {};
    spa_hook_list listeners;
    Canceller canceller;
};

Handle& handleOf(void* object) {
    return *static_cast<Handle*>(object);
}

template <class Call>
int guarded(const Call& call) noexcept {
    try {
        return call();
    } catch (...) {
        return -ENOMEM;
    }
}

// --- The echo canceller

int addListener(void* object, spa_hook* listener, const spa_audio_aec_events* events, void* data) {
    spa_hook_list_append(&handleOf(object).listeners, listener, events, data);
    return 0;
}

int init(void* object, const spa_dict* arguments, const spa_audio_info_raw* format) {
    const Streams same{*format, *format, *format};
    return guarded([&] { return handleOf(object).canceller.open(arguments, same); });
}

int init2(void* object, const spa_dict* arguments, spa_audio_info_raw* captured, spa_audio_info_raw* output,
          spa_audio_info_raw* played) {
    const Streams streams{*captured, *output, *played};
    return guarded([&] { return handleOf(object).canceller.open(arguments, streams); });
}

int run(void* object, const float* captured[], const float* played[], float* output[], uint32_t frames) {
    return handleOf(object).canceller.run(captured, played, output, frames);
}

int activate(void*) {
    return 0;
}

int deactivate(void* object) {
    return guarded([&] {
        handleOf(object).canceller.pause();
        return 0;
    });
}

// 0 before init.
template <class Call>
int withParameters(void* object, const Call& call) {
    Parameters* const parameters = handleOf(object).canceller.parameters();
    return parameters == nullptr ? 0 : guarded([&] { return call(*parameters); });
}

int setProps(void* object, const spa_dict* settings) {
    if (settings == nullptr) return -EINVAL;
    return withParameters(object, [&](Parameters& parameters) { return parameters.set(*settings); });
}

int enumProps(void* object, int index, spa_pod_builder* builder) {
    return withParameters(object, [&](Parameters& parameters) {
        return builder == nullptr ? parameters.count() : parameters.describe(index, *builder);
    });
}

int getParams(void* object, spa_pod_builder* builder) {
    return withParameters(object, [&](Parameters& parameters) {
        if (builder != nullptr) parameters.values(*builder);
        return parameters.count() + Parameters::kTexts;
    });
}

int setParams(void* object, const spa_pod* values) {
    return withParameters(object, [&](Parameters& parameters) { return parameters.set(values); });
}

constexpr AecMethods kMethods = {
    AecMethods::kVersion, addListener, init,      run,       setProps, activate,
    deactivate,           enumProps,   getParams, setParams, init2,
};

// As much as the engine takes at once. PipeWire sets `node.latency` to it when the configuration does not.
constexpr const char* kLatency = "160/16000";

// --- The handle

int getInterface(spa_handle* handle, const char* type, void** interface) {
    if (handle == nullptr || interface == nullptr) return -EINVAL;
    if (!spa_streq(type, SPA_TYPE_INTERFACE_AUDIO_AEC)) return -ENOENT;
    *interface = &static_cast<Handle*>(handle)->interface;
    return 0;
}

int clear(spa_handle* handle) {
    if (handle == nullptr) return -EINVAL;
    static_cast<Handle*>(handle)->~Handle();
    return 0;
}

// --- The factory

size_t getSize(const spa_handle_factory*, const spa_dict*) {
    return sizeof(Handle);
}

int makeHandle(const spa_handle_factory*, spa_handle* memory, const spa_dict*, const spa_support* support,
               uint32_t supports) {
    if (memory == nullptr) return -EINVAL;
    auto* const log = static_cast<spa_log*>(spa_support_find(support, supports, SPA_TYPE_INTERFACE_Log));
    auto* const handle = new (memory) Handle(Log(log));
    handle->version = SPA_VERSION_HANDLE;
    handle->get_interface = getInterface;
    handle->clear = clear;
    handle->interface.iface = {SPA_TYPE_INTERFACE_AUDIO_AEC, SPA_VERSION_AUDIO_AEC, {&kMethods, handle}};
    handle->interface.name = "se";
    handle->interface.latency = kLatency;
    return 0;
}

constexpr spa_interface_info kInterfaces[] = {{SPA_TYPE_INTERFACE_AUDIO_AEC}};

int enumInterfaces(const spa_handle_factory*, const spa_interface_info** info, uint32_t* index) {
    if (info == nullptr || index == nullptr) return -EINVAL;
    if (*index >= std::size(kInterfaces)) return 0;
    *info = &kInterfaces[(*index)++];
    return 1;
}

constexpr spa_handle_factory kFactory = {
    SPA_VERSION_HANDLE_FACTORY, SPA_NAME_AEC, nullptr, getSize, makeHandle, enumInterfaces,
};

}  // namespace

extern "C" __attribute__((visibility("default"))) int spa_handle_factory_enum(
    const spa_handle_factory** factory, uint32_t* index) {
    if (factory == nullptr || index == nullptr) return -EINVAL;
    if (*index > 0) return 0;
    *factory = &kFactory;
    ++*index;
    return 1;
}
