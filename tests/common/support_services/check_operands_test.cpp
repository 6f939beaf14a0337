// The operands that comparison checks take: compiled without a warning, with the operators' own meaning.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "common/check.h"
#include "tests/common/support_services/scoped_threshold.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

TEST(CheckOperands, MayBeAPointerAndTheLiteralsZeroAndNull) {
    const int value = 0;
    const int* const pointer = &value;
    QUILL_CHECK_NE(pointer, 0);
    QUILL_CHECK_NE(0, pointer);
    QUILL_CHECK_NE(pointer, NULL);
    QUILL_CHECK_NE(NULL, pointer);
    QUILL_CHECK_NE(pointer, nullptr);
    QUILL_CHECK_EQ(static_cast<const char*>(nullptr), 0);
    QUILL_CHECK_EQ(pointer, &value);
}

TEST(CheckOperands, MayBeASmartPointerAndALiteral) {
    const auto pointer = std::make_shared<int>(1);
    QUILL_CHECK_NE(pointer, nullptr);
    QUILL_CHECK_NE(pointer, NULL);
    QUILL_CHECK_NE(pointer, 0);
}

TEST(CheckOperands, MayBeASizeAndALiteral) {
    const std::vector<int> three(3);
    const std::vector<int> none;
    QUILL_CHECK_EQ(three.size(), 3);
    QUILL_CHECK_EQ(none.size(), 0);
    QUILL_CHECK_NE(three.size(), 0);
    QUILL_CHECK_GT(three.size(), 0);
    QUILL_CHECK_GE(three.size(), 3);
    QUILL_CHECK_LT(three.size(), 4);
    QUILL_CHECK_LE(three.size(), 3);
    QUILL_CHECK_LT(0, three.size());
    QUILL_CHECK_EQ(3u, 3);
    QUILL_CHECK_EQ(3ul, 3);
    QUILL_CHECK_LT(1.5f, 2);
    QUILL_CHECK_EQ(true, 1);
    QUILL_CHECK_EQ('a', 97);
}

TEST(CheckOperands, AreConvertedAsTheOperatorConvertsThem) {
    const test::ScopedLogCapture log;
    const short negative = -1;
    const unsigned short largest = 65535;
    QUILL_CHECK_NE(negative, largest);
    QUILL_CHECK_EQ(-1, 4294967295u);
    QUILL_CHECK_EQ(-1l, static_cast<int>(4294967295u));
    QUILL_CHECK_GT(0.1, 0.1f - 1);
    EXPECT_TRUE(log.records().empty());
}

TEST(CheckOperands, MayBeOfAClass) {
    const std::string text = "text";
    QUILL_CHECK_EQ(text, "text");
    QUILL_CHECK_LT("a", text);
    QUILL_CHECK_NE(text, std::string());
}

TEST(CheckOperands, MayContainALambda) {
    QUILL_CHECK_EQ([] { return 1; }(), 1);
}

TEST(CheckOperandsDeathTest, ANullPointerIsShownAsZero) {
    const int* const number = nullptr;
    const char* const text = nullptr;
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(number, 0), "check", __FILE__,
                                 "Check failed: number != 0 (0 vs. 0) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(text, NULL), "check", __FILE__,
                                 "Check failed: text != NULL (0 vs. 0) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(0, text), "check", __FILE__,
                                 "Check failed: 0 != text (0 vs. 0) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(text, nullptr), "check", __FILE__,
                                 "Check failed: text != nullptr (0 vs. nullptr) ");
    const uint8_t* const bytes = nullptr;
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(bytes, 0), "check", __FILE__,
                                 "Check failed: bytes != 0 (0 vs. 0) ");
    int8_t* const signed_bytes = nullptr;
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(nullptr, signed_bytes), "check", __FILE__,
                                 "Check failed: nullptr != signed_bytes (nullptr vs. 0) ");
}

TEST(CheckOperandsDeathTest, AreShownAsTheyAreNotAsTheyAreConverted) {
    const std::vector<int> three(3);
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_EQ(three.size(), -1), "check", __FILE__,
                                 "Check failed: three.size() == -1 (3 vs. -1) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_EQ(true, 2), "check", __FILE__,
                                 "Check failed: true == 2 (1 vs. 2) ");
    const char* const text = "text";
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_EQ(text, nullptr), "check", __FILE__,
                                 "Check failed: text == nullptr (text vs. nullptr) ");
}

}  // namespace
}  // namespace quill
