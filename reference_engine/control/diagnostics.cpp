// The diagnostics half of the C interface, answered from the catalogue.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "reference_engine/control/catalogue.h"
#include "reference_engine/engine_interface.h"

using reference_engine::catalogueRow;
using reference_engine::catalogueSize;

namespace {

// The answer for an index that does not exist.
SEDiag_t g_blank = {"", nullptr, nullptr, 0, 0, kSEDiagNone, 0, 0, kSEDiagNoAccess, 0, ""};

SEDiag_t& diag(int32_t index) {
    SEDiag_t* row = catalogueRow(index);
    return row != nullptr ? *row : g_blank;
}

template <class T>
T* elements(int32_t index, SEDiagType_t type) {
    SEDiag_t& row = diag(index);
    return row.type == type ? static_cast<T*>(row.value) : nullptr;
}

template <class T>
T first(int32_t index, SEDiagType_t type) {
    const T* value = elements<T>(index, type);
    return value != nullptr ? *value : T{};
}

// Ranges have at most 40 bits, so a double holds them all.
template <class T>
void assign(int32_t index, SEDiagType_t type, T value) {
    SEDiag_t& row = diag(index);
    T* field = elements<T>(index, type);
    if (field == nullptr || row.len != 1 || (row.rw & kSEDiagWrite) == 0) return;
    const double wanted = static_cast<double>(value);
    if (std::isnan(wanted)) return;
    *field = static_cast<T>(std::clamp(wanted, row.lowest, row.highest));
}

bool hasLabel(const SEDiag_t& row, int32_t value) {
    return value >= 0 && value < row.label_count;
}

}  // namespace

int32_t SEDiagGetNumDiags() {
    return catalogueSize();
}

int32_t SEDiagGetIndex(const char* name) {
    for (int32_t index = 0; index < catalogueSize(); ++index) {
        if (std::strcmp(diag(index).name, name) == 0) return index;
    }
    return -1;
}

SEDiag_t* SEDiagGet(int32_t index) {
    return &diag(index);
}
const char* SEDiagGetName(int32_t index) {
    return diag(index).name;
}
SEDiagType_t SEDiagGetType(int32_t index) {
    return diag(index).type;
}
int32_t SEDiagGetLen(int32_t index) {
    return diag(index).len;
}
SEDiagRW_t SEDiagGetRW(int32_t index) {
    return diag(index).rw;
}
int32_t SEDiagGetLevel(int32_t index) {
    return diag(index).level;
}
const char* SEDiagGetHelp(int32_t index) {
    return diag(index).help;
}

int16_t SEDiagGetInt16(int32_t index) {
    return first<int16_t>(index, kSEDiagInt16);
}
uint16_t SEDiagGetUInt16(int32_t index) {
    return first<uint16_t>(index, kSEDiagUInt16);
}
int32_t SEDiagGetInt32(int32_t index) {
    return first<int32_t>(index, kSEDiagInt32);
}
uint32_t SEDiagGetUInt32(int32_t index) {
    return first<uint32_t>(index, kSEDiagUInt32);
}
int64_t SEDiagGetInt40(int32_t index) {
    return first<int64_t>(index, kSEDiagInt40);
}
uint64_t SEDiagGetUInt40(int32_t index) {
    return first<uint64_t>(index, kSEDiagUInt40);
}
float SEDiagGetFloat32(int32_t index) {
    return first<float>(index, kSEDiagFloat32);
}
int32_t SEDiagGetEnumAsInt(int32_t index) {
    return first<int32_t>(index, kSEDiagEnum);
}

const char* SEDiagGetEnumAsString(int32_t index) {
    const int32_t value = SEDiagGetEnumAsInt(index);
    return hasLabel(diag(index), value) ? diag(index).labels[value] : "";
}

void SEDiagSetInt16(int32_t index, int16_t value) {
    assign(index, kSEDiagInt16, value);
}
void SEDiagSetUInt16(int32_t index, uint16_t value) {
    assign(index, kSEDiagUInt16, value);
}
void SEDiagSetInt32(int32_t index, int32_t value) {
    assign(index, kSEDiagInt32, value);
}
void SEDiagSetUInt32(int32_t index, uint32_t value) {
    assign(index, kSEDiagUInt32, value);
}
void SEDiagSetInt40(int32_t index, int64_t value) {
    assign(index, kSEDiagInt40, value);
}
void SEDiagSetUInt40(int32_t index, uint64_t value) {
    assign(index, kSEDiagUInt40, value);
}
void SEDiagSetFloat32(int32_t index, float value) {
    assign(index, kSEDiagFloat32, value);
}

void SEDiagSetEnumAsInt(int32_t index, int32_t value) {
    if (hasLabel(diag(index), value)) assign(index, kSEDiagEnum, value);
}

int16_t* SEDiagGetInt16Array(int32_t index) {
    return elements<int16_t>(index, kSEDiagInt16);
}
uint16_t* SEDiagGetUInt16Array(int32_t index) {
    return elements<uint16_t>(index, kSEDiagUInt16);
}
int32_t* SEDiagGetInt32Array(int32_t index) {
    return elements<int32_t>(index, kSEDiagInt32);
}
uint32_t* SEDiagGetUInt32Array(int32_t index) {
    return elements<uint32_t>(index, kSEDiagUInt32);
}
int64_t* SEDiagGetInt40Array(int32_t index) {
    return elements<int64_t>(index, kSEDiagInt40);
}
uint64_t* SEDiagGetUInt40Array(int32_t index) {
    return elements<uint64_t>(index, kSEDiagUInt40);
}
float* SEDiagGetFloat32Array(int32_t index) {
    return elements<float>(index, kSEDiagFloat32);
}
