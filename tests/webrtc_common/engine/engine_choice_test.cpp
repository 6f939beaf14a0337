// Which build a start loads. This program is in a folder of its own, whose "selibs" holds a scriptable engine
// under each relevant name.
#include <gtest/gtest.h>

#include "common/config.h"
#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/bound_properties.h"
#include "webrtc_common/se_wrapper/engine/library_property.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::p_config_is_harbor;
using quill::test::isEngineInProcess;
using quill::test::TestEngine;

namespace {

constexpr const char* kBeamForming = "se_lib_beamv1.14";
constexpr const char* kHarbor = "se_lib_harborv006";
constexpr const char* kOther = "other_build";

class EngineChoice : public testing::Test {
  protected:
    EngineChoice()
        : listener_(p_signal_essence_library.node()->addListener(
              [this](quill::PropertyNode&, const quill::PropertyChangeInfo&) {
                  ++changes_;
                  loaded_at_change_ = MMIfInit != nullptr;
              })) {}
    ~EngineChoice() override { p_signal_essence_library.node()->removeListener(listener_); }

    static void expectLoaded(const std::string& name) {
        ASSERT_TRUE(isEngineInProcess(name));
        EXPECT_EQ(TestEngine(name).symbol("MMIfInit"), reinterpret_cast<void*>(MMIfInit));
        for (const char* other : {kBeamForming, kHarbor, kOther}) {
            EXPECT_EQ(other == name, isEngineInProcess(other)) << other;
        }
    }

    quill::test::BoundProperties properties_;
    int changes_ = 0;
    bool loaded_at_change_ = false;
    uint64_t listener_;
};

TEST_F(EngineChoice, IsTheBeamFormingBuildByDefault) {
    initSignalEssenceOptimForTests();
    expectLoaded(kBeamForming);
    EXPECT_EQ(kBeamForming, p_signal_essence_library.get());
}

TEST_F(EngineChoice, IsTheDeviceModelsBuildOnThatModel) {
    p_config_is_harbor.node()->set<bool>(true);
    initSignalEssenceOptimForTests();
    expectLoaded(kHarbor);
    EXPECT_EQ(kHarbor, p_signal_essence_library.get());
}

TEST_F(EngineChoice, IsWrittenIntoThePropertyOnce) {
    initSignalEssenceOptimForTests();
    EXPECT_EQ(1, changes_);
}

TEST_F(EngineChoice, IsWrittenIntoThePropertyOnceTheBuildIsLoaded) {
    initSignalEssenceOptimForTests();
    EXPECT_TRUE(loaded_at_change_);
}

TEST_F(EngineChoice, IsThePropertysBuildWhenItNamesOne) {
    p_signal_essence_library.node()->set<std::string>(kOther);
    changes_ = 0;
    initSignalEssenceOptimForTests();
    expectLoaded(kOther);
    EXPECT_EQ(kOther, p_signal_essence_library.get());
    EXPECT_EQ(0, changes_);
}

TEST_F(EngineChoice, DoesNotAskForTheDeviceModelWhenThePropertyNamesABuild) {
    const quill::test::ScopedAssertionCapture assertions;
    p_config_is_harbor.node()->set<std::string>("perhaps");
    p_signal_essence_library.node()->set<std::string>(kOther);
    initSignalEssenceOptimForTests();
    EXPECT_TRUE(assertions.records().empty());
}

TEST_F(EngineChoice, TakesTheDeviceModelAsText) {
    p_config_is_harbor.node()->set<std::string>("1");
    initSignalEssenceOptimForTests();
    expectLoaded(kHarbor);
}

TEST_F(EngineChoice, AssertsSoftlyWhenTheDeviceModelIsNoBoolAndGoesOn) {
    const quill::test::ScopedAssertionCapture assertions;
    p_config_is_harbor.node()->set<std::string>("perhaps");
    initSignalEssenceOptimForTests();
    ASSERT_FALSE(assertions.texts().empty());
    EXPECT_EQ("Assertion failed: Failed conversion from perhaps.", assertions.texts().front());
    expectLoaded(kBeamForming);
}

TEST_F(EngineChoice, FallsBackToNoOtherBuild) {
    p_signal_essence_library.node()->set<std::string>("no_such_build");
    EXPECT_FATAL_RECORD(
        initSignalEssenceOptimForTests(), "check", (quill::RecordSite{"webrtc_common/se_wrapper", 220}),
        "Check failed se_lib Could not open shared library at " + quill::test::enginePath("no_such_build"));
}

TEST_F(EngineChoice, StaysWhatItWasOnASecondStart) {
    initSignalEssenceOptimForTests();
    p_config_is_harbor.node()->set<bool>(true);
    initSignalEssenceOptimForTests();
    expectLoaded(kBeamForming);
    EXPECT_EQ(kBeamForming, p_signal_essence_library.get());
}

TEST_F(EngineChoice, IsToldBeforeItIsLoaded) {
    EXPECT_EQ(kBeamForming, chosenEngineBuild());
    p_config_is_harbor.node()->set<bool>(true);
    EXPECT_EQ(kHarbor, chosenEngineBuild());
    p_signal_essence_library.node()->set<std::string>(kOther);
    EXPECT_EQ(kOther, chosenEngineBuild());
    EXPECT_EQ(nullptr, MMIfInit);
}

TEST_F(EngineChoice, AFolderCanBeGivenAndTakenBack) {
    const std::string own = engineFolder();
    EXPECT_EQ(quill::test::enginePath(kOther), own + "/" + kOther);
    setEngineFolder("/elsewhere");
    EXPECT_EQ("/elsewhere", engineFolder());
    setEngineFolder("");
    EXPECT_EQ(own, engineFolder());
    initSignalEssenceOptimForTests();
    expectLoaded(kBeamForming);
}

TEST_F(EngineChoice, IsLoadedFromAGivenFolder) {
    setEngineFolder(engineFolder() + "/../selibs");
    p_signal_essence_library.node()->set<std::string>(kOther);
    initSignalEssenceOptimForTests();
    expectLoaded(kOther);
}

TEST_F(EngineChoice, AFolderWithoutItIsNamedInTheFatalRecord) {
    setEngineFolder("/elsewhere");
    EXPECT_FATAL_RECORD(initSignalEssenceOptimForTests(), "check",
                        (quill::RecordSite{"webrtc_common/se_wrapper", 220}),
                        "Check failed se_lib Could not open shared library at /elsewhere/se_lib_beamv1.14");
}

}  // namespace
