// The value types of diagnostics as one table, from which both passes over the catalogue are expanded.
// Not installed: for this folder, and for host/live/, which does the same beside running audio.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

// The engine's side of a type are slots of the interface table, the tree's side are types of property values.
// Every conversion between the two is a static_cast from one column to another: integers are widened by their
// own sign or cut to their low bits.
template <class Value, class Node, class Mark, class Edit>
struct DiagType {
    using NodeType = Node;  // publishing writes the value of a scalar as this
    using MarkType = Mark;  // publishing reads and writes the mark as this
    using EditType = Edit;  // applying reads value and mark, compares the engine's value and writes the mark
    using ValueType = Value;

    SEDiagType_t number;
    Value (**get)(int32_t);
    void (**set)(int32_t, Value);
    Value* (**get_array)(int32_t);  // null: an array of this type has no value
};

// Kept on purpose: 40-bit scalars go to the tree as 64-bit numbers and are edited as 32-bit ones, and unsigned
// ones are signed there, while the elements of their arrays are written unsigned. An Enum is shown as text
// and edited as the number in front of it.
inline constexpr std::tuple kDiagTypes{
    // clang-format off
    //       value               node         mark   edit
    DiagType<int16_t,            int,         int,   int>{
        SE_DIAG_TYPE_INT16, &SEDiagGetInt16, &SEDiagSetInt16, &SEDiagGetInt16Array},
    DiagType<int32_t,            int,         int,   int>{
        SE_DIAG_TYPE_INT32, &SEDiagGetInt32, &SEDiagSetInt32, &SEDiagGetInt32Array},
    DiagType<uint16_t,           int,         int,   int>{
        SE_DIAG_TYPE_UINT16, &SEDiagGetUInt16, &SEDiagSetUInt16, &SEDiagGetUInt16Array},
    DiagType<uint32_t,           long,        long,  long>{
        SE_DIAG_TYPE_UINT32, &SEDiagGetUInt32, &SEDiagSetUInt32, &SEDiagGetUInt32Array},
    DiagType<long long,          long,        long,  int>{
        SE_DIAG_TYPE_INT40, &SEDiagGetInt40, &SEDiagSetInt40, &SEDiagGetInt40Array},
    DiagType<unsigned long long, long,        long,  int>{
        SE_DIAG_TYPE_UINT40, &SEDiagGetUInt40, &SEDiagSetUInt40, &SEDiagGetUInt40Array},
    DiagType<float,              float,       float, float>{
        SE_DIAG_TYPE_FLOAT32, &SEDiagGetFloat32, &SEDiagSetFloat32, &SEDiagGetFloat32Array},
    DiagType<int32_t,            std::string, int,   int>{
        SE_DIAG_TYPE_ENUM, &SEDiagGetEnumAsInt, &SEDiagSetEnumAsInt, nullptr},
    // clang-format on
};

// Calls visit(row) with the row of this type; a type without a row is passed over.
template <class Visit>
void withDiagType(SEDiagType_t type, const Visit& visit) {
    std::apply(
        [&](const auto&... row) { static_cast<void>(((row.number == type && (visit(row), true)) || ...)); },
        kDiagTypes);
}

}  // namespace quill::media::se_wrapper
