// The property that names the engine build.
// Threads: see common/properties.h.
#pragma once

#include <string>

#include "common/properties.h"
#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// "media/signal_essence/signal_essence_library", read-only for people: the file name of the engine build in
// the folder "selibs". Empty, the default: chosen by device model, and named here once it is loaded.
extern SE_WRAPPER_EXPORT StaticProperty<std::string> p_signal_essence_library;
// NOLINTNEXTLINE(performance-unnecessary-value-param): the guard compares the type itself
QUILL_STATIC_PROPERTY_TYPE_GUARD(p_signal_essence_library, std::string)

}  // namespace quill::media::se_wrapper
