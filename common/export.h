// The export macro of libcommon. Everything else in the library is hidden. Users see the same visibility as
// the library does: a type that both know has to be one type, also in a library built with hidden visibility.
#pragma once

#define QUILL_COMMON_EXPORT __attribute__((visibility("default")))
