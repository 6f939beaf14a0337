// The table of operations of each type.
#include "common/property_operators.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace quill::property_internal {
namespace {

template <class T>
const PropertyValueOperators& of() {
    static const std::shared_ptr<PropertyValueOperators> operators = PropertyValueOperatorsT<T>::staticCopy();
    return *operators;
}

template <class T>
bool equal(T a, T b) {
    return of<T>().equals(&a, &b);
}

TEST(Operators, NameTheirTypes) {
    EXPECT_STREQ(of<float>().typeName(), "float");
    EXPECT_STREQ(of<long>().typeName(), "int64");
    EXPECT_STREQ(of<bool>().typeName(), "bool");
    EXPECT_STREQ(of<int>().typeName(), "int32");
    EXPECT_STREQ(of<std::string>().typeName(), "string");
}

TEST(Operators, KnowTheirTypeInfo) {
    EXPECT_EQ(of<float>().typeInfo(), typeid(float));
    EXPECT_EQ(of<long>().typeInfo(), typeid(long));
    EXPECT_EQ(of<bool>().typeInfo(), typeid(bool));
    EXPECT_EQ(of<int>().typeInfo(), typeid(int));
    EXPECT_EQ(of<std::string>().typeInfo(), typeid(std::string));
}

TEST(Operators, TwoNansAreEqual) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(equal(kNan, kNan));
    EXPECT_TRUE(equal(kNan, -kNan));
}

TEST(Operators, NanIsUnequalToAnyNumber) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(equal(kNan, 0.0f));
    EXPECT_FALSE(equal(0.0f, kNan));
    EXPECT_FALSE(equal(kNan, std::numeric_limits<float>::infinity()));
}

TEST(Operators, ZeroEqualsMinusZero) {
    EXPECT_TRUE(equal(0.0f, -0.0f));
}

TEST(Operators, CompareNumbersAndStringsByValue) {
    EXPECT_TRUE(equal(3, 3));
    EXPECT_FALSE(equal(3, 4));
    EXPECT_FALSE(equal(1l << 40, 0l));
    EXPECT_TRUE(equal(true, true));
    EXPECT_FALSE(equal<std::string>("a", "aa"));
    EXPECT_FALSE(equal(std::string("a\0b", 3), std::string("a\0c", 3)));
    EXPECT_TRUE(equal(std::string("a\0b", 3), std::string("a\0b", 3)));
}

TEST(Operators, CanConvertAgreesWithParsing) {
    EXPECT_TRUE(of<int>().canConvertToTypeFromString("12abc"));
    EXPECT_FALSE(of<int>().canConvertToTypeFromString("abc"));
    EXPECT_TRUE(of<bool>().canConvertToTypeFromString("1"));
    EXPECT_FALSE(of<bool>().canConvertToTypeFromString("true"));
    EXPECT_TRUE(of<float>().canConvertToTypeFromString("-nan"));
    EXPECT_FALSE(of<long>().canConvertToTypeFromString(""));
    EXPECT_TRUE(of<std::string>().canConvertToTypeFromString(""));
}

TEST(Operators, CopyConstructsInRawMemory) {
    const std::string source(100, 'x');
    alignas(std::string) unsigned char memory[sizeof(std::string)];
    of<std::string>().valueCopy(memory, &source);
    EXPECT_EQ(of<std::string>().toString(memory), source);
    of<std::string>().valueDestructor(memory);
}

TEST(Operators, CopyToNullDoesNothing) {
    const std::string text = "text";
    const int number = 1;
    of<std::string>().valueCopy(nullptr, &text);
    of<int>().valueCopy(nullptr, &number);
}

}  // namespace
}  // namespace quill::property_internal
