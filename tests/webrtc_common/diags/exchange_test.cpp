// Which of node, mark and engine wins: the whole table.
#include "webrtc_common/se_wrapper/diags/exchange.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace quill::media::se_wrapper;

namespace {

constexpr bool kHasMark = true;
constexpr bool kNoMark = false;

template <class T>
bool applied(T node, T mark, T engine) {
    return isToBeApplied(node, mark, [engine] { return engine; });
}

TEST(EngineValue, IsPublishedWhenItDiffersFromTheMark) {
    EXPECT_TRUE(isToBePublished(kHasMark, 5, 6));
    EXPECT_FALSE(isToBePublished(kHasMark, 5, 5));
}

TEST(EngineValue, IsPublishedWithoutAMark) {
    EXPECT_TRUE(isToBePublished(kNoMark, 0, 0));
    EXPECT_TRUE(isToBePublished(kNoMark, 0, 6));
}

TEST(EngineValue, IsPublishedAgainAndAgainWhenItIsNaN) {
    EXPECT_TRUE(isToBePublished(kHasMark, NAN, NAN));
    EXPECT_TRUE(isToBePublished(kHasMark, 1.0f, NAN));
    EXPECT_TRUE(isToBePublished(kHasMark, NAN, 1.0f));
}

TEST(EngineValue, CountsBothZerosAsTheSame) {
    EXPECT_FALSE(isToBePublished(kHasMark, 0.0f, -0.0f));
    EXPECT_FALSE(isToBePublished(kHasMark, -0.0f, 0.0f));
}

TEST(NodeValue, IsAppliedOnlyWhenTheUserMovedAndTheEngineDidNot) {
    EXPECT_FALSE(applied(5, 5, 5)) << "no side changed";
    EXPECT_FALSE(applied(5, 5, 6)) << "the engine moved";
    EXPECT_TRUE(applied(7, 5, 5)) << "the user moved";
    EXPECT_FALSE(applied(7, 5, 6)) << "both moved: the engine wins";
    EXPECT_FALSE(applied(6, 5, 6)) << "both moved to the same value";
}

TEST(NodeValue, IsAppliedWhenItIsNaN) {
    EXPECT_TRUE(applied(NAN, 1.0f, 1.0f));
    EXPECT_FALSE(applied(NAN, 1.0f, 2.0f));
}

TEST(NodeValue, IsNeverAppliedAgainstANaNMark) {
    EXPECT_FALSE(applied(1.0f, NAN, NAN));
    EXPECT_FALSE(applied(1.0f, NAN, 1.0f));
    EXPECT_FALSE(applied(NAN, NAN, NAN));
}

TEST(NodeValue, CountsBothZerosAsTheSame) {
    EXPECT_FALSE(applied(-0.0f, 0.0f, 0.0f));
    EXPECT_TRUE(applied(1.0f, 0.0f, -0.0f));
}

TEST(NodeValue, IsAllThatIsReadWhileItEqualsTheMark) {
    int questions = 0;
    const auto engine = [&questions] { return ++questions; };
    EXPECT_FALSE(isToBeApplied(5, 5, engine));
    EXPECT_EQ(0, questions);
    isToBeApplied(6, 5, engine);
    EXPECT_EQ(1, questions);
}

}  // namespace
