#include "host/diags/diag_info.h"

#include <fnmatch.h>

#include <algorithm>
#include <iterator>
#include <limits>

#include "host/output/one_line.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

template <class T>
constexpr DiagKind integerKind(SEDiagType_t type, const char* name, T lowest) {
    return {type, name, static_cast<double>(lowest), static_cast<double>(std::numeric_limits<T>::max()),
            false};
}

// 40-bit diagnostics are edited as 32-bit numbers.
constexpr DiagKind kKinds[] = {
    integerKind<int16_t>(SE_DIAG_TYPE_INT16, "Int16", std::numeric_limits<int16_t>::min()),
    integerKind<int32_t>(SE_DIAG_TYPE_INT32, "Int32", std::numeric_limits<int32_t>::min()),
    integerKind<uint16_t>(SE_DIAG_TYPE_UINT16, "UInt16", 0),
    integerKind<uint32_t>(SE_DIAG_TYPE_UINT32, "UInt32", 0),
    integerKind<int32_t>(SE_DIAG_TYPE_INT40, "Int40", std::numeric_limits<int32_t>::min()),
    integerKind<int32_t>(SE_DIAG_TYPE_UINT40, "UInt40", 0),
    {SE_DIAG_TYPE_FLOAT32, "Float32", -std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
     true},
    integerKind<int32_t>(SE_DIAG_TYPE_ENUM, "Enum", std::numeric_limits<int32_t>::min()),
};

constexpr DiagKind kUnknownKind = {SE_DIAG_TYPE_NONE, "none", 0, 0, false};

const DiagKind* kindOf(SEDiagType_t type) {
    const auto* const kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                          [&](const DiagKind& candidate) { return candidate.type == type; });
    return kind == std::end(kKinds) ? &kUnknownKind : kind;
}

// A length that cannot be leaves the diagnostic without a value, as an unknown type does.
DiagInfo infoOf(int index) {
    const int length = se::SEDiagGetLen(index);
    const bool possible = se::isLengthPossible(length);
    return {index,
            se::diagName(index),
            se::getDiagPropertyName(index),
            possible ? kindOf(se::SEDiagGetType(index)) : &kUnknownKind,
            possible ? std::max(length, 1) : 1,
            (se::SEDiagGetRW(index) & SE_DIAG_RW_WRITABLE) != 0,
            se_output::oneLine(se::diagHelp(index))};
}

}  // namespace

bool DiagInfo::isEnum() const {
    return kind->type == SE_DIAG_TYPE_ENUM;
}

std::string DiagInfo::typeText() const {
    return isArray() ? kind->name + ("[" + std::to_string(length) + "]") : kind->name;
}

std::vector<DiagInfo> allDiags() {
    std::vector<DiagInfo> diags;
    const int count = se::numDiags();
    for (int index = 0; index < count; ++index) diags.push_back(infoOf(index));
    return diags;
}

bool matches(const DiagInfo& diag, const std::string& pattern) {
    return ::fnmatch(pattern.c_str(), diag.name.c_str(), 0) == 0 ||
           ::fnmatch(pattern.c_str(), diag.path.c_str(), 0) == 0;
}

}  // namespace se_host
