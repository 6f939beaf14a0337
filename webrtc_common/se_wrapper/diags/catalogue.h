// The engine's diagnostic catalogue as the wrapper sees it: where a diagnostic stands in the property tree,
// how one is found by name, and what replaces the queries that an engine lacks. Nothing is kept: the engine is
// asked each time.
// Threads: [setup] while the engine is brought up, [control] after that.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// [control] The path of a diagnostic, "diags/<level word>/<name>". A level below 0 counts as basic, one above
// 3 as debug; a null name is "(null)". needs: a loaded engine; `index` is handed to the engine as it is.
SE_WRAPPER_EXPORT std::string getDiagPropertyName(int index);

// [setup][control] The index of the first of `names` that the engine knows; later ones are not asked for.
// fails: fatal when it knows none. Kept on purpose: with that record filtered out the result is 0, and the
// caller works on diagnostic 0.
SE_WRAPPER_EXPORT int getDiagIndexOrDie(const std::vector<std::string>& names);

// [control] The level in the engine's record of a diagnostic, for engines without "SEDiagGetLevel"; 0 without a
// record.
SE_WRAPPER_EXPORT int32_t defaultSEDiagGetLevel(int32_t index);

// [control] The help text in the engine's record, owned by the engine, for engines without "SEDiagGetHelp"; null
// without a record.
SE_WRAPPER_EXPORT const char* defaultSEDiagGetHelp(int32_t index);

}  // namespace quill::media::se_wrapper
