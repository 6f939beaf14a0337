// Fatal checks. A check that fails makes one level-1 record with tag "check"; once it has reached the sink
// the process ends. If the "check" tag is filtered out, a failed check reports nothing and execution
// continues. The operands are evaluated once; further text may be streamed into the record.
// rt-safe while the check holds.
#pragma once

#include <cstddef>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

#include "common/export.h"
#include "common/logging.h"
#include "common/record_sites.h"

namespace quill {

namespace check_internal {

template <class T>
inline constexpr bool kIsCharacter =
    std::is_same_v<T, char> || std::is_same_v<T, signed char> || std::is_same_v<T, unsigned char>;

// An operand as the message shows it. A stream takes a pointer to characters for text, and a null one would end
// the message; it is shown as every other null pointer is.
template <class T>
decltype(auto) shown(const T& operand) {
    if constexpr (std::is_pointer_v<T> && kIsCharacter<std::remove_const_t<std::remove_pointer_t<T>>>) {
        return operand != nullptr ? reinterpret_cast<const char*>(operand) : "0";
    } else {
        return (operand);
    }
}

}  // namespace check_internal

// [any] The message of a failed comparison: text (a vs. b), in default stream formatting. The caller owns it.
// A null `text` puts the stream into its failure state: the message is empty.
template <class A, class B>
std::string* MakeCheckOpString(const A& a, const B& b, const char* text) {
    std::ostringstream message;
    message.imbue(std::locale::classic());
    if (text == nullptr) {
        message.setstate(std::ios::badbit);
    } else {
        message << text;
    }
    message << " (" << check_internal::shown(a) << " vs. " << check_internal::shown(b) << ")";
    return new std::string(message.str());
}

namespace check_internal {

// The operand literals 0 and NULL where the other operand takes a null pointer and no number.
struct NullLiteral {
    // NOLINTNEXTLINE(google-explicit-constructor): the literals are to be converted
    NullLiteral(std::nullptr_t) {}
};

// An operand as `a op b` converts it. Numbers are converted here, so that the literal of v.size() == 0 causes
// no warning about its sign.
template <class Other, class T>
decltype(auto) converted(const T& operand) {
    if constexpr (std::is_arithmetic_v<T> && std::is_arithmetic_v<Other>) {
        return static_cast<decltype(T() + Other())>(operand);
    } else {
        return (operand);
    }
}

using Message = std::unique_ptr<std::string>;  // null: the comparison holds

#define QUILL_DEFINE_CHECK_OP(name, op)                                                              \
    template <class A, class B>                                                                      \
    auto name(const A& a, const B& b, const char* text)                                              \
        ->decltype(void(converted<B>(a) op converted<A>(b)), Message()) {                            \
        return converted<B>(a) op converted<A>(b) ? nullptr                                          \
                                                  : Message(::quill::MakeCheckOpString(a, b, text)); \
    }                                                                                                \
    template <class A>                                                                               \
    auto name(const A& a, NullLiteral, const char* text)->decltype(void(a op nullptr), Message()) {  \
        return a op nullptr ? nullptr : Message(::quill::MakeCheckOpString(a, 0, text));             \
    }                                                                                                \
    template <class B>                                                                               \
    auto name(NullLiteral, const B& b, const char* text)->decltype(void(nullptr op b), Message()) {  \
        return nullptr op b ? nullptr : Message(::quill::MakeCheckOpString(0, b, text));             \
    }
QUILL_DEFINE_CHECK_OP(equal, ==)
QUILL_DEFINE_CHECK_OP(notEqual, !=)
QUILL_DEFINE_CHECK_OP(less, <)
QUILL_DEFINE_CHECK_OP(lessOrEqual, <=)
QUILL_DEFINE_CHECK_OP(greater, >)
QUILL_DEFINE_CHECK_OP(greaterOrEqual, >=)
#undef QUILL_DEFINE_CHECK_OP

}  // namespace check_internal
}  // namespace quill

// The condition is evaluated before the filter is asked.
#define QUILL_CHECK_RECORD(holds_, site_)             \
    (holds_) || !::quill::isLoggerEnabled(1, "check") \
        ? (void)0                                     \
        : QUILL_STREAM_INTO_RECORD(1, "check", (site_).source, (site_).line)

#define QUILL_CHECK_TEXT(site_, condition_, text_) \
    QUILL_WITH_CALL_SITE                           \
    QUILL_CHECK_RECORD(condition_, site_) << "Check failed " text_ " "

#define QUILL_CHECK_OP_TEXT(site_, compare_, a_, b_, text_)                                         \
    QUILL_WITH_CALL_SITE                                                                            \
    QUILL_WITH(const auto quill_check_message__ = ::quill::check_internal::compare_(a_, b_, text_)) \
    QUILL_CHECK_RECORD(quill_check_message__ == nullptr, site_)                                     \
        << "Check failed: " << *quill_check_message__ << " "

#define QUILL_HERE (::quill::RecordSite{__FILE__, __LINE__})

// The _AT forms carry the identity of a record that hosts recognise (common/record_sites.h).
#define QUILL_CHECK(condition) QUILL_CHECK_TEXT(QUILL_HERE, condition, #condition)
#define QUILL_CHECK_AT(site, condition) QUILL_CHECK_TEXT(site, condition, #condition)

#define QUILL_CHECK_EQ(a, b) QUILL_CHECK_OP_TEXT(QUILL_HERE, equal, a, b, #a " == " #b)
#define QUILL_CHECK_NE(a, b) QUILL_CHECK_OP_TEXT(QUILL_HERE, notEqual, a, b, #a " != " #b)
#define QUILL_CHECK_LT(a, b) QUILL_CHECK_OP_TEXT(QUILL_HERE, less, a, b, #a " < " #b)
#define QUILL_CHECK_LE(a, b) QUILL_CHECK_OP_TEXT(QUILL_HERE, lessOrEqual, a, b, #a " <= " #b)
#define QUILL_CHECK_GT(a, b) QUILL_CHECK_OP_TEXT(QUILL_HERE, greater, a, b, #a " > " #b)
#define QUILL_CHECK_GE(a, b) QUILL_CHECK_OP_TEXT(QUILL_HERE, greaterOrEqual, a, b, #a " >= " #b)

#define QUILL_CHECK_EQ_AT(site, a, b) QUILL_CHECK_OP_TEXT(site, equal, a, b, #a " == " #b)
#define QUILL_CHECK_LE_AT(site, a, b) QUILL_CHECK_OP_TEXT(site, lessOrEqual, a, b, #a " <= " #b)
#define QUILL_CHECK_GT_AT(site, a, b) QUILL_CHECK_OP_TEXT(site, greater, a, b, #a " > " #b)
