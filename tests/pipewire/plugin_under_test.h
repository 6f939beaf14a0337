// The plugin as PipeWire uses it: loaded by file name, called through the table of its interface.
#pragma once

#include <spa/param/audio/raw.h>
#include <spa/support/plugin.h>
#include <spa/utils/dict.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "pipewire/aec_methods.h"
#include "tests/pipewire/log_recorder.h"

namespace se_pipewire_test {

using Arguments = std::vector<spa_dict_item>;

// Planar floats with these positions, or with AUX0, AUX1, ...
spa_audio_info_raw format(uint32_t channels, std::vector<uint32_t> positions = {}, uint32_t rate = 16000);

// The library, until it is closed.
class Library {
  public:
    Library();
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    const spa_handle_factory& factory() const { return *factory_; }

    // The function that a plugin exports.
    spa_handle_factory_enum_func_t enumerate() const { return enumerate_; }

  private:
    void* library_;
    spa_handle_factory_enum_func_t enumerate_;
    const spa_handle_factory* factory_ = nullptr;
};

// A handle of it.
class Plugin {
  public:
    Plugin();
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    spa_handle& handle() { return *handle_; }
    spa_audio_aec& interface() { return *interface_; }
    const se_pipewire::AecMethods& methods() const;
    void* object() const { return interface_->iface.cb.data; }

    int init(const Arguments& arguments = {}, const spa_audio_info_raw& format = format8());
    int init2(const Arguments& arguments, spa_audio_info_raw captured, spa_audio_info_raw output,
              spa_audio_info_raw played);

    // What the plugin wrote into PipeWire's log.
    const std::string& log() const { return log_.text(); }

  private:
    static spa_audio_info_raw format8() { return format(8); }

    Library library_;
    LogRecorder log_;
    std::unique_ptr<std::byte[]> memory_;
    spa_handle* handle_;
    spa_audio_aec* interface_ = nullptr;
};

}  // namespace se_pipewire_test
