// The path of a diagnostic in the property tree.
#include <gtest/gtest.h>

#include "tests/engines/test_engine.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::TestEngine;

namespace {

class DiagPropertyPath : public testing::Test {
  protected:
    DiagPropertyPath() { openSignalEssenceDynamicLibrary("test_engines/full"); }

    std::string pathAtLevel(int level) {
        return getDiagPropertyName(engine_->add_diag("gain_x", 1, 1, 3, level, "help"));
    }

    TestEngine engine_;
};

TEST_F(DiagPropertyPath, BeginsWithTheWordOfTheLevel) {
    EXPECT_EQ("diags/basic/gain_x", pathAtLevel(0));
    EXPECT_EQ("diags/intermediate/gain_x", pathAtLevel(1));
    EXPECT_EQ("diags/advanced/gain_x", pathAtLevel(2));
    EXPECT_EQ("diags/debug/gain_x", pathAtLevel(3));
}

TEST_F(DiagPropertyPath, IsBasicForANegativeLevel) {
    EXPECT_EQ("diags/basic/gain_x", pathAtLevel(-1));
    EXPECT_EQ("diags/basic/gain_x", pathAtLevel(INT32_MIN));
}

TEST_F(DiagPropertyPath, IsDebugForALevelAboveThree) {
    EXPECT_EQ("diags/debug/gain_x", pathAtLevel(4));
    EXPECT_EQ("diags/debug/gain_x", pathAtLevel(7));
    EXPECT_EQ("diags/debug/gain_x", pathAtLevel(INT32_MAX));
}

TEST_F(DiagPropertyPath, AsksForTheNameFirstAndThenForTheLevel) {
    const int index = engine_->add_diag("gain_x", 1, 1, 3, 0, "");
    engine_->clear_calls();
    getDiagPropertyName(index);
    EXPECT_EQ((std::vector<std::string>{"SEDiagGetName(0)", "SEDiagGetLevel(0)"}), engine_.calls());
}

TEST_F(DiagPropertyPath, TakesTheEnginesAnswersToAnInvalidIndexAsTheyCome) {
    engine_->set_name(-1, "nothing");
    engine_->set_level(-1, 2);
    EXPECT_EQ("diags/advanced/nothing", getDiagPropertyName(-1));
    EXPECT_EQ("diags/advanced/nothing", getDiagPropertyName(1000));
}

TEST_F(DiagPropertyPath, HoldsANameOfAnyLength) {
    const std::string name(5000, 'n');
    EXPECT_EQ("diags/basic/" + name, getDiagPropertyName(engine_->add_diag(name.c_str(), 1, 1, 3, 0, "")));
}

TEST_F(DiagPropertyPath, KeepsNothingOfAnEarlierAnswer) {
    const int index = engine_->add_diag("old", 1, 1, 3, 0, "");
    getDiagPropertyName(index);
    engine_->set_name(index, "new");
    engine_->set_level(index, 1);
    EXPECT_EQ("diags/intermediate/new", getDiagPropertyName(index));
}

}  // namespace
