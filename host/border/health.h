// The health of a host as the fields of the C struct.
#pragma once

#include "host/health/health.h"
#include "host/se_host.h"

namespace se_host {

se_host_health_t shownOf(const Health& health);

}  // namespace se_host
