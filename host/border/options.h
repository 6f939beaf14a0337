// The options of se_host_open in the terms of the library.
#pragma once

#include <string>

#include "host/host.h"
#include "host/se_host.h"

namespace se_host {

HostOptions hostOptionsOf(const se_host_options_t& options);

// Why they cannot be meant; empty: nothing.
std::string objectionTo(const se_host_options_t& options);

}  // namespace se_host
