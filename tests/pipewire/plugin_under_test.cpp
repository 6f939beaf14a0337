#include "tests/pipewire/plugin_under_test.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace se_pipewire_test {
namespace {

// A PipeWire without a log hands nothing here; ours always has one.
spa_support supportOf(LogRecorder& log) {
    return {SPA_TYPE_INTERFACE_Log, log.interface()};
}

spa_dict dictOf(const Arguments& arguments) {
    return {0, static_cast<uint32_t>(arguments.size()), arguments.data()};
}

}  // namespace

spa_audio_info_raw format(uint32_t channels, std::vector<uint32_t> positions, uint32_t rate) {
    spa_audio_info_raw raw{};
    raw.format = SPA_AUDIO_FORMAT_F32P;
    raw.rate = rate;
    raw.channels = channels;
    for (uint32_t i = 0; i < std::min(channels, SPA_AUDIO_MAX_CHANNELS); ++i) {
        raw.position[i] = i < positions.size() ? positions[i] : SPA_AUDIO_CHANNEL_AUX0 + i;
    }
    return raw;
}

Library::Library() : library_(::dlopen(SE_AEC_PLUGIN, RTLD_NOW | RTLD_LOCAL)) {
    if (library_ == nullptr) throw std::runtime_error(::dlerror());
    enumerate_ = reinterpret_cast<spa_handle_factory_enum_func_t>(
        ::dlsym(library_, SPA_HANDLE_FACTORY_ENUM_FUNC_NAME));
    uint32_t index = 0;
    if (enumerate_(&factory_, &index) != 1) throw std::runtime_error("the plugin has no factory");
}

Library::~Library() {
    ::dlclose(library_);
}

Plugin::Plugin()
    : memory_(new std::byte[library_.factory().get_size(&library_.factory(), nullptr)]),
      handle_(reinterpret_cast<spa_handle*>(memory_.get())) {
    const spa_support support = supportOf(log_);
    library_.factory().init(&library_.factory(), handle_, nullptr, &support, 1);
    void* interface = nullptr;
    handle_->get_interface(handle_, SPA_TYPE_INTERFACE_AUDIO_AEC, &interface);
    interface_ = static_cast<spa_audio_aec*>(interface);
}

Plugin::~Plugin() {
    handle_->clear(handle_);
}

const se_pipewire::AecMethods& Plugin::methods() const {
    return *static_cast<const se_pipewire::AecMethods*>(interface_->iface.cb.funcs);
}

int Plugin::init(const Arguments& arguments, const spa_audio_info_raw& format) {
    const spa_dict dict = dictOf(arguments);
    return methods().init(object(), &dict, &format);
}

int Plugin::init2(const Arguments& arguments, spa_audio_info_raw captured, spa_audio_info_raw output,
                  spa_audio_info_raw played) {
    const spa_dict dict = dictOf(arguments);
    return methods().init2(object(), &dict, &captured, &output, &played);
}

}  // namespace se_pipewire_test
