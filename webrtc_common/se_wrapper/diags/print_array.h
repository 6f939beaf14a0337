// The text form of an array diagnostic.
#pragma once

#include <string>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// [any] "[ 1, -2, 3 ]"; without elements two blanks stand between the brackets. Integers are written in
// decimal, floats as printf's %g writes them in the C locale.
// in: `count` elements; a negative count is none. T: short, int, unsigned short, unsigned int, long long,
// unsigned long long or float; any other is an undefined reference when linking.
template <class T>
SE_WRAPPER_EXPORT std::string printArray(const T* values, int count);

}  // namespace quill::media::se_wrapper
