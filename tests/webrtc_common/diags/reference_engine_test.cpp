// Both passes with a real engine: the builds in selibs/.
#include "common/properties.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper.h"

namespace se = quill::media::se_wrapper;
using quill::PropertyNodePtr;
using quill::test::ScopedAssertionCapture;
using quill::test::ScopedLogCapture;

namespace {

class BridgeToABuild : public testing::TestWithParam<const char*> {
  protected:
    BridgeToABuild() {
        const ScopedLogCapture no_load_notice(2);
        quill::initStaticProperties(root_);
        se::p_signal_essence_library.node()->set<std::string>(GetParam());
        se::initSignalEssence();
        se::readSignalEssenceDiags(root_);
    }
    void TearDown() override { EXPECT_EQ(std::vector<std::string>{}, assertions_.texts()); }

    PropertyNodePtr nodeOf(int index) { return root_->getNode(se::getDiagPropertyName(index), false); }
    void edit(int index, const std::string& text) {
        std::string error;
        EXPECT_TRUE(nodeOf(index)->setFromText(text, &error)) << error;
    }

    ScopedAssertionCapture assertions_;
    PropertyNodePtr root_ = quill::PropertyNode::createRoot();
};

TEST_P(BridgeToABuild, PublishesEveryDiagnosticButTheLargeArrays) {
    for (int index = 0; index < se::SEDiagGetNumDiags(); ++index) {
        const PropertyNodePtr node = nodeOf(index);
        ASSERT_EQ(se::SEDiagGetLen(index) <= 10, node != nullptr) << se::SEDiagGetName(index);
        if (node == nullptr) continue;
        EXPECT_FALSE(node->value().empty()) << node->getFullName();
        EXPECT_TRUE(node->hasMeta("help")) << node->getFullName();
    }
}

TEST_P(BridgeToABuild, PublishesTheLargeArraysOnRequest) {
    root_->getNode("transfer_large_arrays", true)->set<bool>(true);
    se::readSignalEssenceDiags(root_);
    for (int index = 0; index < se::SEDiagGetNumDiags(); ++index) EXPECT_NE(nullptr, nodeOf(index));
}

TEST_P(BridgeToABuild, AppliesNothingThatWasNotEdited) {
    const ScopedLogCapture log(5);
    se::writeSignalEssenceDiags(root_);
    EXPECT_TRUE(log.records().empty());
}

TEST_P(BridgeToABuild, AppliesAnEditedNumber) {
    edit(se::g_diag_gain, "512");
    se::writeSignalEssenceDiags(root_);
    EXPECT_EQ(512, se::SEDiagGetInt16(se::g_diag_gain));
}

TEST_P(BridgeToABuild, AppliesAnEditedEnum) {
    const int index = se::getDiagIndexOrDie({"mmfx_look_mode"});
    edit(index, "1");
    se::writeSignalEssenceDiags(root_);
    se::readSignalEssenceDiags(root_);
    EXPECT_EQ("1 - Forward", nodeOf(index)->get<std::string>());
}

TEST_P(BridgeToABuild, ShowsWhatTheEngineAcceptedOfAnEdit) {
    const int index = se::getDiagIndexOrDie({"mmfx_rear_rejection_db"});
    edit(index, "1000");
    se::writeSignalEssenceDiags(root_);
    se::readSignalEssenceDiags(root_);
    EXPECT_LE(nodeOf(index)->get<float>(), 40.0f);
}

INSTANTIATE_TEST_SUITE_P(EachBuild, BridgeToABuild, testing::Values("se_lib_beamv1.14", "se_lib_harborv006"),
                         [](const auto& instance) { return instance.index == 0 ? "beam" : "device_model"; });

}  // namespace
