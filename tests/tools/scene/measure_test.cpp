// The measurements that tests and the host apply to recordings.
#include "tools/scene/measure.h"

#include <gtest/gtest.h>

#include <cmath>

namespace se_scene {
namespace {

Row sine(double hertz, double height, size_t frames, double delay = 0) {
    Row row(frames);
    for (size_t i = 0; i < frames; ++i) {
        const double time = (static_cast<double>(i) - delay) / kSampleRate;
        row[i] = static_cast<float>(height * std::sin(2 * M_PI * hertz * time));
    }
    return row;
}

TEST(Measure, AFullSineHasThreeDecibelsLessThanFullScale) {
    EXPECT_NEAR(levelDbfs(sine(1000, 1, kSampleRate)), -3.01, 0.01);
}

TEST(Measure, SilenceHasTheSilentLevel) {
    EXPECT_EQ(levelDbfs(Row(100)), kSilent);
    EXPECT_EQ(activeLevelDbfs(Row(1000)), kSilent);
}

TEST(Measure, AnEmptyRowHasTheSilentLevel) {
    EXPECT_EQ(levelDbfs(Row()), kSilent);
    EXPECT_EQ(activeLevelDbfs(Row()), kSilent);
}

TEST(Measure, PausesDoNotCountForTheActiveLevel) {
    Row row = sine(1000, 0.1, kSampleRate);
    row.resize(4 * kSampleRate);
    EXPECT_NEAR(activeLevelDbfs(row), -23.01, 0.01);
    EXPECT_NEAR(levelDbfs(row), -23.01 - 6.02, 0.01);
}

TEST(Measure, RatioIsThatOfPowers) {
    EXPECT_NEAR(ratioDb(sine(1000, 0.5, 1600), sine(1000, 0.05, 1600)), 20, 0.01);
}

TEST(Measure, AnExcerptIsCutAtTheEnds) {
    const Row row(kSampleRate, 1.0F);
    EXPECT_EQ(excerpt(row, 0.25, 0.5).size(), 4000U);
    EXPECT_EQ(excerpt(row, 0.75, 9).size(), 4000U);
    EXPECT_EQ(excerpt(row, -1, 0.25).size(), 4000U);
    EXPECT_TRUE(excerpt(row, 2, 3).empty());
    EXPECT_TRUE(excerpt(row, 0.5, 0.5).empty());
}

TEST(Measure, FindsADelayBetweenSamples) {
    Row first = sine(700, 0.1, 4000);
    Row second = sine(700, 0.1, 4000, 2.3);
    for (size_t i = 0; i < first.size(); ++i) {  // a slow fade in and out, so that the ends have no effect
        const double swell = std::sin(M_PI * static_cast<double>(i) / 4000);
        first[i] = static_cast<float>(swell * swell * static_cast<double>(first[i]));
        second[i] = static_cast<float>(swell * swell * static_cast<double>(second[i]));
    }
    EXPECT_NEAR(delayBetween(first, second, 8), 2.3, 0.02);
    EXPECT_NEAR(delayBetween(second, first, 8), -2.3, 0.02);
}

}  // namespace
}  // namespace se_scene
