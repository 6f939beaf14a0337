// What the two passes agree upon: each diagnostic's node carries a mark, the value that was last exchanged
// between node and engine. Node, mark and engine together tell which side has changed since.
// Not installed: for this folder, and for host/live/, which does the same beside running audio.
#pragma once

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

// Characters, and no string that would have to be made while the library is loaded.
inline constexpr char kDiagMark[] = "se_diag";

// Whether the user may change the diagnostic. No other access bit has a meaning.
inline bool isDiagWritable(int index) {
    return (SEDiagGetRW(index) & SE_DIAG_RW_WRITABLE) != 0;
}

// Whether the engine's value goes to the node: it does when the engine has changed, or nothing was exchanged
// yet. Numbers are compared: NaN is always published, -0 equals 0.
template <class T>
bool isToBePublished(bool has_mark, T mark, T engine) {
    return !has_mark || engine != mark;
}

// Whether the node's value goes to the engine: it does when the user has changed it and the engine has not. The
// engine wins when both have. It is asked, by ask_engine(), only about a node that has changed.
template <class T, class AskEngine>
bool isToBeApplied(T node, T mark, const AskEngine& ask_engine) {
    return node != mark && ask_engine() == mark;
}

}  // namespace quill::media::se_wrapper
