// The values that belong to no diagnostic and are published after the catalogue.
#include "tests/webrtc_common/diags/bridge.h"
#include "tests/webrtc_common/diags/tree_watch.h"

using namespace quill::test;

namespace {

class PublishOthers : public Bridge {};

TEST_F(PublishOthers, AreWrittenEvenWithoutAnyDiagnostic) {
    engine->set_location(7, -3);
    engine->set_aec_bypass(1);
    engine->set_noise_reduction_bypass(1);
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "MMIfGetCurrentLocation()", "MMIfGetAecBypass()",
                     "MMIfGetNoiseReductionBypass()"}),
              callsOf([&] { publish(); }));
    EXPECT_EQ("int32 7", top("location"));
    EXPECT_EQ("int32 -3", top("location_conf"));
    EXPECT_EQ("bool 1", top("aec_bypass"));
    EXPECT_EQ("bool 1", top("noise_reduction_bypass"));
    EXPECT_FALSE(root->exists("diags"));
}

TEST_F(PublishOthers, WidenTheLocationWithoutSignAndTheConfidenceWithIts) {
    engine->set_location(65535, -32768);
    publish();
    EXPECT_EQ("int32 65535", top("location"));
    EXPECT_EQ("int32 -32768", top("location_conf"));
}

TEST_F(PublishOthers, TakeAnyOtherBypassThanZeroForTrue) {
    engine->set_aec_bypass(0x8000);
    engine->set_noise_reduction_bypass(0x8000);
    publish();
    EXPECT_EQ("bool 1", top("aec_bypass"));
    EXPECT_EQ("bool 1", top("noise_reduction_bypass"));
}

TEST_F(PublishOthers, ReadTheLowSixteenBitsOfTheNoiseReductionBypass) {
    engine->set_noise_reduction_bypass(0xFFFF0000u);
    publish();
    EXPECT_EQ("bool 0", top("noise_reduction_bypass"));
}

TEST_F(PublishOthers, AreWrittenOnEveryPass) {
    publish();
    for (const char* name : {"location", "location_conf"}) root->getNode(name, true)->set<int>(99);
    for (const char* name : {"aec_bypass", "noise_reduction_bypass"})
        root->getNode(name, true)->set<bool>(true);
    publish();
    EXPECT_EQ("int32 0", top("location"));
    EXPECT_EQ("int32 0", top("location_conf"));
    EXPECT_EQ("bool 0", top("aec_bypass"));
    EXPECT_EQ("bool 0", top("noise_reduction_bypass"));
}

TEST_F(PublishOthers, CarryNoMetadataAndNoRecord) {
    EXPECT_EQ(Lines{}, recordsOf([&] { publish(); }));
    for (const char* name : {"location", "location_conf", "aec_bypass", "noise_reduction_bypass"}) {
        const auto found = root->getNode(name, true);
        const quill::PropertyNodeData::SharedDataLock lock(found.get(), nullptr);
        EXPECT_EQ(nullptr, lock->metadata) << name;
    }
}

class PublishWithoutNoiseReductionBypass : public Bridge {
  protected:
    PublishWithoutNoiseReductionBypass() : Bridge("test_engines/without_MMIfGetNoiseReductionBypass") {}
};

TEST_F(PublishWithoutNoiseReductionBypass, MakesNoNodeForIt) {
    publish();
    EXPECT_FALSE(root->exists("noise_reduction_bypass"));
    EXPECT_EQ("bool 0", top("aec_bypass"));
}

TEST_F(PublishWithoutNoiseReductionBypass, LeavesTheNodeUntouched) {
    root->getNode("noise_reduction_bypass", true)->set<int>(4);
    publish();
    EXPECT_EQ("int32 4", top("noise_reduction_bypass"));
}

class UnchangedPass : public Bridge {};

TEST_F(UnchangedPass, WritesNothingAndNotifiesNoListener) {
    for (int type = 0; type <= 9; ++type) {
        add(type, ("scalar_" + std::to_string(type)).c_str(), kReadOnly);
        addArray(type, 10, ("array_" + std::to_string(type)).c_str(), kReadWrite);
    }
    publish();
    const TreeWatch watch(root);
    publish();
    EXPECT_EQ(0, watch.changes());
}

}  // namespace
