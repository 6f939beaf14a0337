// Applying: what a user has changed in the property tree goes to the engine.
// Threads: [control]. Nothing is kept between passes, as in publishing.
#pragma once

#include "common/property_node.h"
#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// [control] One pass over the writable scalars of the catalogue, in the order of the indexes, then both bypass
// switches. A node that differs from the value last exchanged, its metadata "se_diag", was edited; the edit
// goes to the engine if the engine still holds the value last exchanged, and is the value last exchanged from
// then on. When the engine has moved as well the edit is dropped: the next readSignalEssenceDiags replaces it.
// A node without "se_diag" counts as 0. Nodes of read-only diagnostics and of arrays are not read.
//
// A node is read as an int (an Enum by the number in front of its text), of a UInt32 as a long, of a Float32
// as a float, of any type: a text is converted. 16-bit diagnostics receive the low 16 bits, a UInt32 the low
// 32. Kept on purpose: 40-bit diagnostics are edited as 32-bit numbers, and only the low 32 bits of what the
// engine holds are compared.
//
// "aec_bypass" and, if the engine can take it, "noise_reduction_bypass" are handed over on every pass.
// Nodes that are missing are made, without "help"; one without a value is a soft assertion and counts as 0.
//
// needs: a valid root; a loaded and initialised engine that takes settings now; no other pass in progress.
// fails: soft assertion on a text that is no number of its type or out of its range; the pass goes on with what
// the conversion left, the nearest number of the type or 0.
SE_WRAPPER_EXPORT void writeSignalEssenceDiags(const PropertyNodePtr& root);

}  // namespace quill::media::se_wrapper
