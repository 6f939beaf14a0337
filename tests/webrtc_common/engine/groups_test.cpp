// Optional entry points that come together or not at all: every subset of each group. Bit k of a subset's
// number is the k-th symbol of the group, in the order of the table.
#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/engine_rows.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/records.h"

using namespace quill::media::se_wrapper;
using namespace quill::media::se_wrapper::test;

namespace {

struct Group {
    const char* prefix;
    EngineRowKind kind;
    unsigned size;
    const char* check;
};

constexpr Group kDirection{"direction", EngineRowKind::direction, 4,
                           "Check failed mmifdirs == 4 || mmifdirs == 0 "};
constexpr Group kNoiseTest{"noise_test", EngineRowKind::noise_test, 3,
                           "Check failed mmifnoise == 3 || mmifnoise == 0 "};
constexpr Group kDftHooks{"dft_hook", EngineRowKind::dft_hook, 3,
                          "Check failed fcnhook == 3 || fcnhook == 0 "};

void expectAllOrNothing(const Group& group, unsigned subset) {
    const std::string name = std::string("test_engines/") + group.prefix + "_" + std::to_string(subset);
    const bool all = subset == (1u << group.size) - 1;
    if (!all && subset != 0) {
        EXPECT_FATAL_RECORD_ANY_LINE(openSignalEssenceDynamicLibrary(name), "check", SE_WRAPPER_SOURCE,
                                     group.check);
        return;
    }
    openSignalEssenceDynamicLibrary(name);
    EXPECT_EQ(all ? group.size : 0, countPresentEngineRows(group.kind));
    EXPECT_EQ(group.kind != EngineRowKind::direction || all, g_has_beam_forming);
    EXPECT_EQ(group.kind != EngineRowKind::noise_test || all, g_has_noise_tests);
}

using Subset = testing::TestWithParam<unsigned>;

class DirectionSubset : public Subset {};
TEST_P(DirectionSubset, LoadsOnlyWhenWholeOrEmpty) {
    expectAllOrNothing(kDirection, GetParam());
}
INSTANTIATE_TEST_SUITE_P(Every, DirectionSubset, testing::Range(0u, 16u));

class NoiseTestSubset : public Subset {};
TEST_P(NoiseTestSubset, LoadsOnlyWhenWholeOrEmpty) {
    expectAllOrNothing(kNoiseTest, GetParam());
}
INSTANTIATE_TEST_SUITE_P(Every, NoiseTestSubset, testing::Range(0u, 8u));

class DftHookSubset : public Subset {};
TEST_P(DftHookSubset, LoadsOnlyWhenWholeOrEmpty) {
    expectAllOrNothing(kDftHooks, GetParam());
}
INSTANTIATE_TEST_SUITE_P(Every, DftHookSubset, testing::Range(0u, 8u));

TEST(EngineWithoutDirectionEntryPoints, HasNoBeamForming) {
    openSignalEssenceDynamicLibrary("test_engines/direction_0");
    EXPECT_FALSE(g_has_beam_forming);
    EXPECT_TRUE(g_has_noise_tests);
}

TEST(EngineWithTwoDirectionEntryPoints, StopsTheProcess) {
    EXPECT_FATAL_RECORD_ANY_LINE(openSignalEssenceDynamicLibrary("test_engines/direction_3"), "check",
                                 SE_WRAPPER_SOURCE, "Check failed mmifdirs == 4 || mmifdirs == 0 ");
}

TEST(PartsOfTwoGroups, AreReportedByTheDirectionGroupBeforeTheNoiseTests) {
    EXPECT_FATAL_RECORD_ANY_LINE(
        openSignalEssenceDynamicLibrary(
            "test_engines/without_MMIfStartNoiseTest_and_MMIfLookForwardRejectRearNoise"),
        "check", SE_WRAPPER_SOURCE, kDirection.check);
}

TEST(PartsOfTwoGroups, AreReportedByTheNoiseTestsBeforeTheDftHooks) {
    EXPECT_FATAL_RECORD_ANY_LINE(
        openSignalEssenceDynamicLibrary("test_engines/without_InitDftFcnHook_and_MMIfStartNoiseTest"),
        "check", SE_WRAPPER_SOURCE, kNoiseTest.check);
}

TEST(PartOfAGroup, IsReportedAfterEveryMandatorySymbolIsFound) {
    EXPECT_FATAL_RECORD(openSignalEssenceDynamicLibrary(
                            "test_engines/without_SEDiagGetName_and_MMIfLookForwardRejectRearNoise"),
                        "check", quill::record_sites::kSymbolByName,
                        "Check failed *sym Symbol SEDiagGetName not found!");
}

TEST(FullEngine, HasBeamFormingAndNoiseTests) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_TRUE(g_has_beam_forming);
    EXPECT_TRUE(g_has_noise_tests);
}

// Three of the four, two of the three.
TEST(PartOfAGroup, DoesNotCountWhenFatalRecordsAreDropped) {
    quill::setLogThreshold("check", 0);
    openSignalEssenceDynamicLibrary("test_engines/direction_7");
    EXPECT_FALSE(g_has_beam_forming);
    EXPECT_TRUE(g_has_noise_tests);
}

TEST(PartOfTheNoiseTest, DoesNotCountWhenFatalRecordsAreDropped) {
    quill::setLogThreshold("check", 0);
    openSignalEssenceDynamicLibrary("test_engines/noise_test_3");
    EXPECT_TRUE(g_has_beam_forming);
    EXPECT_FALSE(g_has_noise_tests);
}

}  // namespace
