// The settings of an engine as the C interface lists them: its diagnostics, then what stands beside them.
#pragma once

#include <string>
#include <vector>

#include "host/host.h"

namespace se_host {

struct Setting {
    std::string name;
    std::string path;
    std::string type;
    std::string help;
    unsigned elements;
    bool writable;
    double lowest;
    double highest;
};

std::vector<Setting> settingsOf(Host& host);

}  // namespace se_host
