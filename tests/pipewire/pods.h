// PipeWire's plain old data as a program that shows and sets parameters reads and writes it.
#pragma once

#include <spa/pod/builder.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/pipewire/plugin_under_test.h"

namespace se_pipewire_test {

// The description of a parameter.
struct Description {
    std::string name;
    std::string help;
    uint32_t type = 0;            // SPA_TYPE_Int, ...
    std::vector<double> numbers;  // the value and what it may be
    bool is_param = false;
};

int descriptionCount(const Plugin& plugin);
Description description(const Plugin& plugin, int index);
Description description(const Plugin& plugin, const std::string& name);

// All values in their order; numbers as printf("%g") writes them, switches as 0 and 1.
using Values = std::vector<std::pair<std::string, std::string>>;
Values values(const Plugin& plugin);
std::string value(const Plugin& plugin, const std::string& name);

// Sets what is written into the struct: names and values in turn.
int set(const Plugin& plugin, const std::function<void(spa_pod_builder*)>& write);

}  // namespace se_pipewire_test
