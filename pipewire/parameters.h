// The engine's settings as PipeWire's parameters: `pw-cli` and every graphical patch bay shows and sets them while sound runs.
// Threads: PipeWire's main thread.
#pragma once

#include <spa/pod/builder.h>
#include <spa/pod/pod.h>
#include <spa/utils/dict.h>

#include <cstddef>
#include <string>
#include <vector>

#include "host/se_host.h"
#include "pipewire/log.h"

namespace se_pipewire {

class Parameters {
  public:
    // More of them end the process: module-echo-cancel keeps them in an array of 512, with some of its own.
    static constexpr size_t kMost = 500;

    // The writable single values of the engine, the basic ones first. needs: `host` lives longer.
    Parameters(se_host_t* host, const Log& log);

    int count() const { return static_cast<int>(settings_.size()); }

    // Adds the description of a parameter: name, help, type, range and value. result: 0, or a negative errno.
    int describe(int index, spa_pod_builder& builder) const;

    // Adds names and values, beginning with two texts: "se.engine", the engine's build and version, and "se.advice", what
    // is wrong with the sound.
    void values(spa_pod_builder& builder) const;
    static constexpr int kTexts = 2;

    // Of a struct of names and values. Names that the engine does not have belong to somebody else (PipeWire gives its own
    // settings here, too) and are ignored. result: 0, or a negative errno after a line in the log.
    int set(const spa_pod* values);
    int set(const spa_dict& values);

  private:
    std::string value(const se_host_setting_t& setting) const;
    int set(const char* name, const std::string& value);

    se_host_t* host_;
    Log log_;
    std::vector<se_host_setting_t> settings_;
};

}  // namespace se_pipewire
