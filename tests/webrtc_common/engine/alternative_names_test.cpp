// Entry points that engine versions name differently, and where each slot points after loading.
#include <gtest/gtest.h>

#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/engine_rows.h"
#include "webrtc_common/se_wrapper/engine/load.h"

using namespace quill::media::se_wrapper;
using namespace quill::media::se_wrapper::test;
using quill::test::TestEngine;

namespace {

class AnySlot : public testing::TestWithParam<std::size_t> {};

TEST_P(AnySlot, PointsAtTheSymbolOfItsFirstName) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    const TestEngine engine("test_engines/full");
    ASSERT_NE(nullptr, slotValue(GetParam()));
    EXPECT_EQ(engine.symbol(kEngineRows[GetParam()].symbols[0]), slotValue(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Every, AnySlot, testing::Range(std::size_t{0}, kNumEngineRows), rowName);

class SlotWithTwoNames : public testing::TestWithParam<std::size_t> {};

TEST_P(SlotWithTwoNames, PointsAtTheSecondNameWhenTheEngineHasThatAlone) {
    const std::string second = kEngineRows[GetParam()].symbols[1];
    openSignalEssenceDynamicLibrary("test_engines/with_" + second);
    const TestEngine engine("test_engines/with_" + second);
    ASSERT_NE(nullptr, slotValue(GetParam()));
    EXPECT_EQ(engine.symbol(second), slotValue(GetParam()));
}

TEST_P(SlotWithTwoNames, PrefersTheFirstNameWhenTheEngineHasBoth) {
    openSignalEssenceDynamicLibrary("test_engines/both_names");
    const TestEngine engine("test_engines/both_names");
    ASSERT_NE(nullptr, slotValue(GetParam()));
    EXPECT_EQ(engine.symbol(kEngineRows[GetParam()].symbols[0]), slotValue(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Every, SlotWithTwoNames,
                         testing::ValuesIn(rowsOf({EngineRowKind::alternatives, EngineRowKind::hook})),
                         rowName);

TEST(EngineWithSEDiagGetInt64Alone, IsAskedThroughSEDiagGetInt40) {
    openSignalEssenceDynamicLibrary("test_engines/with_SEDiagGetInt64");
    TestEngine engine("test_engines/with_SEDiagGetInt64");
    const int index = engine->add_diag("wide", 5, 1, 3, 0, "");
    engine->set_integer(index, 1LL << 39);
    EXPECT_EQ(1LL << 39, SEDiagGetInt40(index));
    EXPECT_EQ(std::vector<std::string>{"SEDiagGetInt64(0)"}, engine.calls("SEDiagGetInt64"));
}

TEST(EngineWithComputeRFirFcnHookAlone, LetsItsRoutineBeReadThroughTheHook) {
    openSignalEssenceDynamicLibrary("test_engines/with_ComputeRFirFcnHook");
    const TestEngine engine("test_engines/with_ComputeRFirFcnHook");
    EXPECT_EQ(engine->own_routine("ComputeRFirFcnHook"), reinterpret_cast<void*>(*ComputeRFir_FcnHook));
}

TEST(EngineWithNeitherComputeRFirNorComputeRFirFcnHook, StopsTheProcess) {
    EXPECT_FATAL_RECORD(openSignalEssenceDynamicLibrary("test_engines/without_ComputeRFir"), "check",
                        quill::record_sites::kSymbolByList,
                        "Check failed *sym Symbols ComputeRFir,ComputeRFirFcnHook not found!");
}

}  // namespace
