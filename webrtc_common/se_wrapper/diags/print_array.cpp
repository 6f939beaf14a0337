#include "webrtc_common/se_wrapper/diags/print_array.h"

#include <algorithm>

#include "common/dynlib.h"

namespace quill::media::se_wrapper {

template <class T>
std::string printArray(const T* values, int count) {
    return "[ " + join(values, values + std::max(count, 0), ", ") + " ]";
}

template SE_WRAPPER_EXPORT std::string printArray(const short*, int);
template SE_WRAPPER_EXPORT std::string printArray(const int*, int);
template SE_WRAPPER_EXPORT std::string printArray(const unsigned short*, int);
template SE_WRAPPER_EXPORT std::string printArray(const unsigned int*, int);
template SE_WRAPPER_EXPORT std::string printArray(const long long*, int);
template SE_WRAPPER_EXPORT std::string printArray(const unsigned long long*, int);
template SE_WRAPPER_EXPORT std::string printArray(const float*, int);

}  // namespace quill::media::se_wrapper
