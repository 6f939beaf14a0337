// Publishing: the engine's diagnostics as nodes of the host's property tree.
// Threads: [control]. Nothing is kept between passes: the value last exchanged is in the tree, as
// metadata "se_diag" of each scalar's node.
#pragma once

#include "common/property_node.h"
#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// [control] One pass over the whole catalogue, in the order of the indexes, then four values of the engine as a
// whole. Below `root`:
//
//   diags/<level word>/<name>   each diagnostic, see below; metadata "help" on a node that this pass makes,
//                               "read_only" true where the user may not write (and never taken back)
//   location, location_conf     int: the look direction and its confidence
//   aec_bypass                  bool
//   noise_reduction_bypass      bool, untouched when the engine cannot tell
//   transfer_large_arrays       bool, read only: without it arrays of more than 10 elements are passed over
//
// A scalar is an int (Int16, Int32, UInt16), a long (UInt32, Int40, UInt40) or a float, written only when it
// differs from the value last exchanged, so that an unchanged engine changes nothing and a user's edit stands
// until writeSignalEssenceDiags has seen it. Kept on purpose: an Enum, "2 - Narrow", and an array,
// "[ 1, -2, 3 ]", are written on every pass, an edit that was not applied yet included; a UInt40 beyond 63 bits
// is negative. A diagnostic of an unknown type, or an array of more than 4,194,304 elements, gets a node without a
// value; a catalogue of more than 262,144 diagnostics is left out.
//
// needs: a valid root; a loaded and initialised engine; no other pass in progress.
// fails: nothing. The engine's answers are taken as they come; a mark or flag whose value was replaced
// by an unreadable one is the property tree's soft assertion.
SE_WRAPPER_EXPORT void readSignalEssenceDiags(const PropertyNodePtr& root);

}  // namespace quill::media::se_wrapper
