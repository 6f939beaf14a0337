// The scriptable engine's diagnostic catalogue.
#include <cstring>
#include <type_traits>

#include "tests/engines/engine_state.h"

using test_engine::Diag;
using test_engine::orNull;
using test_engine::record;
using test_engine::state;

namespace {

constexpr unsigned char kFiller = 0xA5;  // neither a valid level nor a valid pointer

template <class T>
T* handOut(Diag& diag) {
    const auto length = static_cast<std::size_t>(diag.length > 0 ? diag.length : 0);
    auto& elements = diag.handed_out.emplace<std::vector<T>>(length);
    const auto fill = [&](const auto& values) {
        for (const auto& [element, value] : values) {
            const auto position = static_cast<std::size_t>(element);
            if (position < length) elements[position] = static_cast<T>(value);
        }
    };
    if constexpr (std::is_floating_point_v<T>) {
        fill(diag.reals);
    } else {
        fill(diag.integers);
    }
    return elements.data();
}

}  // namespace

// The three entry points of a type; `field` holds its value.
#define DIAG_TYPE(Type, T, field)                                              \
    TEST_ENGINE_EXPORT T SEDiagGet##Type(int32_t index) {                      \
        record("SEDiagGet" #Type, index);                                      \
        return static_cast<T>(state().diag(index).field);                      \
    }                                                                          \
    TEST_ENGINE_EXPORT void SEDiagSet##Type(int32_t index, T value) {          \
        record("SEDiagSet" #Type, index, value);                               \
        state().diag(index).field = static_cast<decltype(Diag::field)>(value); \
    }                                                                          \
    TEST_ENGINE_EXPORT T* SEDiagGet##Type##Array(int32_t index) {              \
        record("SEDiagGet" #Type "Array", index);                              \
        return orNull(handOut<T>(state().diag(index)));                        \
    }

DIAG_TYPE(Int16, int16_t, integer)
DIAG_TYPE(UInt16, uint16_t, integer)
DIAG_TYPE(Int32, int32_t, integer)
DIAG_TYPE(UInt32, uint32_t, integer)
DIAG_TYPE(Int40, long long, integer)
DIAG_TYPE(UInt40, unsigned long long, integer)
DIAG_TYPE(Int64, long long, integer)
DIAG_TYPE(UInt64, unsigned long long, integer)
DIAG_TYPE(Float32, float, real)

TEST_ENGINE_EXPORT int32_t SEDiagGetEnumAsInt(int32_t index) {
    record("SEDiagGetEnumAsInt", index);
    return static_cast<int32_t>(state().diag(index).integer);
}

TEST_ENGINE_EXPORT const char* SEDiagGetEnumAsString(int32_t index) {
    record("SEDiagGetEnumAsString", index);
    const Diag& diag = state().diag(index);
    const auto label = diag.labels.find(static_cast<int>(diag.integer));
    return orNull(label == diag.labels.end() ? "no label" : label->second.c_str());
}

TEST_ENGINE_EXPORT void SEDiagSetEnumAsInt(int32_t index, int32_t value) {
    record("SEDiagSetEnumAsInt", index, value);
    state().diag(index).integer = value;
}

TEST_ENGINE_EXPORT SEDiag_t* SEDiagGet(int32_t index) {
    record("SEDiagGet", index);
    Diag& diag = state().diag(index);
    std::memset(&diag.record, kFiller, sizeof diag.record);
    diag.record.level = diag.record_level;
    diag.record.help = diag.record_help.c_str();
    return orNull(&diag.record);
}

TEST_ENGINE_EXPORT int32_t SEDiagGetIndex(const char* name) {
    record("SEDiagGetIndex", name);
    const auto found = state().indexes.find(name);
    return found == state().indexes.end() ? state().unknown_name_answer : found->second;
}

TEST_ENGINE_EXPORT int32_t SEDiagGetNumDiags() {
    record("SEDiagGetNumDiags");
    return state().reported_count;
}

TEST_ENGINE_EXPORT int32_t SEDiagGetType(int32_t index) {
    record("SEDiagGetType", index);
    return state().diag(index).type;
}

TEST_ENGINE_EXPORT int32_t SEDiagGetLen(int32_t index) {
    record("SEDiagGetLen", index);
    return state().diag(index).length;
}

TEST_ENGINE_EXPORT const char* SEDiagGetHelp(int32_t index) {
    record("SEDiagGetHelp", index);
    return orNull(state().diag(index).help.c_str());
}

TEST_ENGINE_EXPORT int32_t SEDiagGetRW(int32_t index) {
    record("SEDiagGetRW", index);
    return state().diag(index).rw;
}

TEST_ENGINE_EXPORT int32_t SEDiagGetLevel(int32_t index) {
    record("SEDiagGetLevel", index);
    return state().diag(index).level;
}

TEST_ENGINE_EXPORT const char* SEDiagGetName(int32_t index) {
    record("SEDiagGetName", index);
    return orNull(state().diag(index).name.c_str());
}
