// Applying floats: NaN, both zeros, infinity.
#include <cmath>

#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class ApplyFloat : public Bridge {
  protected:
    int addAt(float in_engine) {
        const int index = add(kFloat32);
        engine->set_real(index, in_engine);
        publish();
        return index;
    }
};

TEST_F(ApplyFloat, SendsATextAndLogsSixSignificantDigits) {
    addAt(0.5f);
    node()->set<std::string>("1234567");
    EXPECT_EQ((Lines{"User changed x to 1.23457e+06"}), recordsOf([&] { apply(); }));
    EXPECT_EQ(1234567.0f, engine->real(0));
}

TEST_F(ApplyFloat, SendsNaN) {
    const int index = addAt(1.0f);
    node()->set<float>(NAN);
    apply();
    EXPECT_TRUE(std::isnan(engine->real(index)));
    EXPECT_EQ("float nan", mark());
}

TEST_F(ApplyFloat, SendsNaNOnlyOnceSinceTheMarkIsNaNThen) {
    addAt(1.0f);
    node()->set<float>(NAN);
    apply();
    EXPECT_EQ(Lines{}, applied());
}

TEST_F(ApplyFloat, IsNeverSentAgainstANaNMark) {
    const int index = addAt(NAN);
    node()->set<float>(1.0f);
    EXPECT_EQ(Lines{}, applied());
    engine->set_real(index, 1.0f);
    EXPECT_EQ(Lines{}, applied());
}

TEST_F(ApplyFloat, AsksTheEngineAboutANaNInTheNode) {
    addAt(NAN);
    apply();
    EXPECT_EQ(2, engine.count("SEDiagGetFloat32"));  // once by each pass
}

TEST_F(ApplyFloat, TreatsBothZerosAsEqual) {
    const int index = addAt(0.0f);
    node()->set<float>(-0.0f);
    EXPECT_EQ(Lines{}, applied());
    engine->set_real(index, -0.0f);
    node()->set<float>(1.0f);
    EXPECT_EQ((Lines{"SEDiagSetFloat32(0, 1)"}), applied());
}

TEST_F(ApplyFloat, SendsNegativeZeroAgainstAnotherMark) {
    const int index = addAt(1.0f);
    node()->set<float>(-0.0f);
    apply();
    EXPECT_EQ(0.0f, engine->real(index));
    EXPECT_TRUE(std::signbit(engine->real(index)));
}

TEST_F(ApplyFloat, SendsInfinity) {
    const int index = addAt(1.0f);
    node()->set<std::string>("-inf");
    apply();
    EXPECT_EQ(-INFINITY, engine->real(index));
}

}  // namespace
