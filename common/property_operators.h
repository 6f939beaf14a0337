// The operations on a property value whose type is known at run time only: one table per type. They take no
// lock.
#pragma once

#include <memory>
#include <string>
#include <typeinfo>

#include "common/export.h"
#include "common/value_traits.h"

namespace quill::property_internal {

// The order of the virtual functions is part of the interface. Every `value` points at a value of the type.
class QUILL_COMMON_EXPORT PropertyValueOperators {
  public:
    virtual ~PropertyValueOperators();

    virtual std::string toString(const void* value) const = 0;
    // needs: a constructed value. fails: soft assertion; the value may have changed.
    virtual void fromString(void* value, const std::string& text) const = 0;
    virtual bool canConvertToTypeFromString(const std::string& text) const = 0;
    // Ends the value's life; its memory belongs to the caller.
    virtual void valueDestructor(void* value) const = 0;
    // Constructs a copy in raw memory; nothing when `destination` is null.
    virtual void valueCopy(void* destination, const void* source) const = 0;
    // Two float NaNs are equal, so that setting NaN again is no change.
    virtual bool equals(const void* a, const void* b) const = 0;
    virtual const std::type_info& typeInfo() const = 0;
    virtual const char* typeName() const = 0;
};

// T: float, long, bool, int or std::string.
template <class T>
class QUILL_COMMON_EXPORT PropertyValueOperatorsT final : public PropertyValueOperators {
  public:
    // [any] The one instance in the process, made at first use and never destroyed.
    static std::shared_ptr<PropertyValueOperators> staticCopy();

    std::string toString(const void* value) const override;
    void fromString(void* value, const std::string& text) const override;
    bool canConvertToTypeFromString(const std::string& text) const override;
    void valueDestructor(void* value) const override;
    void valueCopy(void* destination, const void* source) const override;
    bool equals(const void* a, const void* b) const override;
    const std::type_info& typeInfo() const override;
    const char* typeName() const override;
};

// Instantiated in libcommon and nowhere else, so that the instances are one per process.
extern template class PropertyValueOperatorsT<float>;
extern template class PropertyValueOperatorsT<long>;
extern template class PropertyValueOperatorsT<bool>;
extern template class PropertyValueOperatorsT<int>;
extern template class PropertyValueOperatorsT<std::string>;

}  // namespace quill::property_internal
