// The layouts that the wrapper shares with the engine.
#include "webrtc_common/se_wrapper/table/engine_types.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

using quill::media::se_wrapper::NoiseTestResults;

namespace {

TEST(SEDiagRecord, HoldsTheLevelAtByte112AndTheHelpTextAtByte128) {
    EXPECT_EQ(112u, offsetof(SEDiag_t, level));
    EXPECT_EQ(4u, sizeof(SEDiag_t::level));
    EXPECT_EQ(128u, offsetof(SEDiag_t, help));
    EXPECT_EQ(8u, sizeof(SEDiag_t::help));
}

TEST(NoiseTestRecord, IsThirtyRowsOfSixSinglePrecisionValues) {
    EXPECT_EQ(720u, sizeof(NoiseTestResults));
    EXPECT_EQ(180u, std::extent_v<decltype(NoiseTestResults::values)>);
}

TEST(DftObject, BeginsWithThePointerLeftToTheImplementation) {
    EXPECT_EQ(0u, offsetof(DftObj_t, context));
    EXPECT_TRUE((std::is_same_v<DftObj_t, DftObjStruct>));
}

TEST(DiagType, CarriesEveryNumberThatAnEngineMayAnswer) {
    EXPECT_EQ(9, static_cast<SEDiagType_t>(9));
    EXPECT_EQ(-1, static_cast<SEDiagType_t>(-1));
    EXPECT_EQ(INT32_MAX, static_cast<SEDiagRW_t>(INT32_MAX));
}

}  // namespace
