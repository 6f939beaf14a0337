// With the parts of a simulated recording the summary shows how each was changed.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class SceneParts : public HostTest {
  protected:
    // The far end is active all the time, the talker from the sixth second on unless `more` says otherwise.
    void makeCall(std::vector<std::string> more) {
        more.insert(more.begin(), {"scene", path("in.wav"), "--quiet", "--parts", path("in")});
        expectDone(run(more));
    }

    nlohmann::json effect(std::vector<std::string> more) {
        more.insert(more.end(), {"--parts", path("in"), "--json"});
        const HostRun result = process(more);
        expectDone(result);
        return nlohmann::json::parse(result.out)["effect"];
    }
};

TEST_F(SceneParts, ReportTheEchoAttenuation) {
    makeCall({"--seconds", "6", "--echo", "-30", "--reverberation", "0.2", "--talker-start", "5"});
    EXPECT_GT(effect({"--far-end-channel", "0"})["echo_return_loss_enhancement_db"], 25);
}

TEST_F(SceneParts, ReportThatABypassedEngineLeavesTheEcho) {
    makeCall({"--seconds", "4", "--echo", "-30", "--level", "none"});
    const auto shown = effect({"--far-end-channel", "0", "--bypass"});
    EXPECT_NEAR(shown["echo_return_loss_enhancement_db"], 0, 2);
    EXPECT_TRUE(shown["talker_change_db"].is_null());
}

TEST_F(SceneParts, ReportTheNoiseAttenuationAndThatTheVoiceIsKept) {
    makeCall({"--seconds", "6", "--talker-start", "4", "--sensor-noise", "-55"});
    const auto shown = effect({});
    EXPECT_TRUE(shown["echo_return_loss_enhancement_db"].is_null());
    EXPECT_GT(shown["noise_reduction_db"], 12);
    EXPECT_NEAR(shown["talker_change_db"], 0, 2);
}

TEST_F(SceneParts, AreLinesOfTheSummary) {
    makeCall({"--seconds", "4", "--level", "none"});
    const HostRun result = process({"--parts", path("in")});
    expectDone(result);
    for (const char* line : {"\n  echo      none to measure\n", "\n  noise     lowered by ",
                             "\n  voice     never without echo\n"}) {
        EXPECT_NE(result.out.find(line), std::string::npos) << line << result.out;
    }
}

TEST_F(SceneParts, ThatAreNotThereAreNamed) {
    makeCall({"--seconds", "1"});
    noteFiles();
    expectRefused(process({"--parts", path("other")}), kFailure, "other-talker.wav");
}

TEST_F(SceneParts, AreNotOverwritten) {
    makeCall({"--seconds", "1"});
    noteFiles();
    expectRefused(run({"process", path("in.wav"), path("in-echo.wav"), "--parts", path("in")}), kWrongUsage,
                  "output '" + path("in-echo.wav") + "' is one of the inputs");
    EXPECT_EQ(readSound(path("in-echo.wav")).channels, 8);
}

TEST_F(SceneParts, OfAnotherRecordingAreRefused) {
    makeCall({"--seconds", "1"});
    writeSound(path("in-echo.wav"), patternedSound(320));
    noteFiles();
    expectRefused(process({"--parts", path("in")}), kFailure, "in-echo.wav");
}

}  // namespace
}  // namespace se_host_test
