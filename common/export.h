// The export macro of libcommon. Everything else in the library is hidden. Users see the same visibility as
// the library: a type that both use is one type, also in a library that is built with hidden visibility.
//
// Threads: what this folder declares is [any] and not rt-safe unless its header says otherwise.
#pragma once

#define QUILL_COMMON_EXPORT __attribute__((visibility("default")))
