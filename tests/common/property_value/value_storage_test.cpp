// Where a value is stored, and how it is replaced.
#include <gtest/gtest.h>

#include <limits>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

using test::textValue;
using test::valueOf;

bool liesInside(const PropertyValue& value) {
    const auto* const address = static_cast<const char*>(value.address());
    const auto* const begin = reinterpret_cast<const char*>(&value);
    return address >= begin && address < begin + sizeof(value);
}

template <class T>
T stored(const PropertyValue& value) {
    T result{};
    EXPECT_TRUE(value.get(result));
    return result;
}

TEST(ValueStorage, IsEmptyAtFirst) {
    const PropertyValue value;
    EXPECT_TRUE(value.empty());
    EXPECT_STREQ(value.typeName(), "");
    EXPECT_EQ(value.toString(), "");
    EXPECT_EQ(value.size(), 0u);
    EXPECT_EQ(value.address(), nullptr);
}

TEST(ValueStorage, KeepsWhatItIsGiven) {
    EXPECT_EQ(stored<float>(valueOf(-1.5f)), -1.5f);
    EXPECT_EQ(stored<long>(valueOf(std::numeric_limits<long>::min())), std::numeric_limits<long>::min());
    EXPECT_EQ(stored<bool>(valueOf(true)), true);
    EXPECT_EQ(stored<int>(valueOf(std::numeric_limits<int>::min())), std::numeric_limits<int>::min());
    EXPECT_EQ(stored<std::string>(textValue("text")), "text");
}

TEST(ValueStorage, HoldsSmallTypesInside) {
    EXPECT_TRUE(liesInside(valueOf(1.0f)));
    EXPECT_TRUE(liesInside(valueOf(1l)));
    EXPECT_TRUE(liesInside(valueOf(true)));
    EXPECT_TRUE(liesInside(valueOf(1)));
}

TEST(ValueStorage, HoldsEvenAShortStringOnTheHeap) {
    EXPECT_FALSE(liesInside(textValue("")));
    EXPECT_FALSE(liesInside(textValue("text")));
}

TEST(ValueStorage, KnowsTheSizeOfItsType) {
    EXPECT_EQ(valueOf(true).size(), 1u);
    EXPECT_EQ(valueOf(1).size(), 4u);
    EXPECT_EQ(valueOf(1.0f).size(), 4u);
    EXPECT_EQ(valueOf(1l).size(), 8u);
    EXPECT_EQ(textValue("text").size(), sizeof(std::string));
}

TEST(ValueStorage, ABoolAfterAStringIsStoredInside) {
    PropertyValue value = textValue("a text that is longer than any string keeps within itself");
    value.set(true);
    EXPECT_TRUE(liesInside(value));
    EXPECT_EQ(value.size(), 1u);
    EXPECT_TRUE(stored<bool>(value));
}

TEST(ValueStorage, AStringMayReplaceAString) {
    PropertyValue value = textValue("a text that is longer than any string keeps within itself");
    value.set<std::string>("short");
    EXPECT_EQ(value.toString(), "short");
}

TEST(ValueStorage, TheTypeMayChangeAnyNumberOfTimes) {
    PropertyValue value;
    for (int round = 0; round < 3; ++round) {
        value.set(round);
        value.set(1.5f);
        value.set<std::string>("text");
        value.set(2l);
        value.set<std::string>("");
        value.set(false);
        EXPECT_STREQ(value.typeName(), "bool");
    }
}

TEST(ValueStorage, ClearLeavesItEmpty) {
    for (PropertyValue value : {valueOf(1), textValue("text"), PropertyValue()}) {
        value.clear();
        EXPECT_TRUE(value.empty());
        EXPECT_EQ(value.address(), nullptr);
        value.set<std::string>("again");
        EXPECT_EQ(value.toString(), "again");
    }
}

}  // namespace
}  // namespace quill
