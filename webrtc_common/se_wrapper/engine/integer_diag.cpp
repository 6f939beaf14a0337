#include "webrtc_common/se_wrapper/engine/integer_diag.h"

#include <cstdint>

#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace quill::media::se_wrapper {

void setIntegerDiag(const std::string& name, int value) {
    const int index = SEDiagGetIndex(name.c_str());
    if (index < 0 || index >= numDiags()) {
        SE_WRAPPER_LOG(2) << "Can't find diag " << name;
        return;
    }
    switch (SEDiagGetType(index)) {
        case SE_DIAG_TYPE_INT16:
            SEDiagSetInt16(index, static_cast<int16_t>(value));
            break;
        case SE_DIAG_TYPE_INT32:
            SEDiagSetInt32(index, value);
            break;
        case SE_DIAG_TYPE_UINT16:
            SEDiagSetUInt16(index, static_cast<uint16_t>(value));
            break;
        case SE_DIAG_TYPE_UINT32:
            SEDiagSetUInt32(index, static_cast<uint32_t>(value));
            break;
        default:
            SE_WRAPPER_LOG(2) << "Unhandled type " << static_cast<int>(SEDiagGetType(index));
    }
}

}  // namespace quill::media::se_wrapper
