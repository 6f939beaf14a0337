// The host's common configuration.
#pragma once

#include "common/export.h"
#include "common/properties.h"

namespace quill {

// "config/is_harbor": whether the device is the model that has an engine build of its own. Default false.
extern QUILL_COMMON_EXPORT StaticProperty<bool> p_config_is_harbor;
QUILL_STATIC_PROPERTY_TYPE_GUARD(p_config_is_harbor, bool)

}  // namespace quill
