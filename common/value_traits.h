// The text form of property values, which users see and type. The same in every locale.
#pragma once

#include <string>

#include "common/export.h"

namespace quill {

// The conversions of one value type T (float, long, bool, int or std::string); `value` points at a T.
template <class T>
struct QUILL_COMMON_EXPORT ValueTraitsHelper {
    // [any] bool: "1" or "0"; int and long: decimal; a string: itself; float: see below.
    static std::string toString(const void* value);

    // [any] One ordinary stream extraction, in number form for bool. Kept on purpose: what follows the number
    // is not examined, so that "2 - Narrow" reads as 2. A string takes the text as it is. fails: false; the
    // value may have changed.
    static bool tryFromString(void* value, const std::string& text);

    // [any] The same, but the number and blanks around it must be the whole text. fails: as above.
    static bool tryFromWholeText(void* value, const std::string& text);

    // [any] tryFromString; a failure is the soft assertion "Failed conversion from ...".
    static void fromString(void* value, const std::string& text);
};

namespace property_internal {

// NaN and infinity are "nan", "-nan", "inf", "-inf" and nothing else; a finite number has six digits after
// the point, as printf's %f has in the C locale. "nan" is the quiet NaN without payload.
template <class T>
struct QUILL_COMMON_EXPORT ValueTraitsHelperFloatingPoint {
    static std::string toString(const void* value);
    static bool tryFromString(void* value, const std::string& text);
};

extern template struct ValueTraitsHelperFloatingPoint<float>;

}  // namespace property_internal

extern template struct ValueTraitsHelper<float>;
extern template struct ValueTraitsHelper<long>;
extern template struct ValueTraitsHelper<bool>;
extern template struct ValueTraitsHelper<int>;
extern template struct ValueTraitsHelper<std::string>;

}  // namespace quill
