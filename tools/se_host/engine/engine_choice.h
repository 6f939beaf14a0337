// The engine that a command runs, and how it is watched.
#pragma once

#include "host/engine/engine.h"
#include "tools/se_host/engine/supervisor.h"

namespace se_host {

struct EngineChoice : EngineOptions {
    Supervision supervision;  // the command passes it to superviseEngine first
};

}  // namespace se_host
