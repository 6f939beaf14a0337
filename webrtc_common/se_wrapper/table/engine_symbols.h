// Whether what an engine exports can be used as the table uses it.
#pragma once

#include <string>

#include "common/dynlib.h"
#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// [setup] Why an opened engine cannot be used although it exports a name: "symbol ComputeRFir is a function, not a
// variable", for example. The wrapper calls what stands in the table and writes to the hooks; either would end the
// process with a signal. Empty when the kinds of all its symbols are right, and when a symbol that every engine
// needs is missing, which the resolution of the table reports.
SE_WRAPPER_EXPORT std::string whyNotUsable(DynLibHandle engine);

}  // namespace quill::media::se_wrapper
