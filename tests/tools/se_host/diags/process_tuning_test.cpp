// `se_host process --tuning`.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

class ProcessTuning : public DiagsTest {
  protected:
    ProcessTuning() { makeRecording(20); }

    std::vector<int16_t> outputWith(const Words& more) const {
        expectDone(process(more));
        return readSound(path("out.wav")).samples;
    }
};

TEST_F(ProcessTuning, OfWhatTheEngineHoldsAnywayChangesNothing) {
    dump("a.json");
    EXPECT_EQ(outputWith({"--tuning", path("a.json")}), outputWith({}));
}

TEST_F(ProcessTuning, ChangesTheOutput) {
    printed({"set", "seout_gain_q10=0", "--save", path("a.json")});
    const std::vector<int16_t> silence(20 * 160, 0);
    EXPECT_NE(outputWith({}), silence);
    EXPECT_EQ(outputWith({"--tuning", path("a.json")}), silence);
}

TEST_F(ProcessTuning, WarnsOfWhatDoesNotFitAndGoesOn) {
    writeTuning("a.json", {{"volume", 11}});
    const HostRun result = process({"--tuning", path("a.json")});
    EXPECT_EQ(result.exit_code, kSettingsDiffer);
    EXPECT_EQ(result.err, "se_host: '" + path("a.json") + "': the engine has no diagnostic 'volume'\n");
    EXPECT_EQ(readSound(path("out.wav")).frames(), 3200u);
}

TEST_F(ProcessTuning, LenientIsContentWithWhatFits) {
    writeTuning("a.json", {{"volume", 11}});
    const HostRun result = process({"--tuning", path("a.json"), "--lenient"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.errorLines(), 1u) << result.err;
}

TEST_F(ProcessTuning, StrictEndsBeforeAnythingIsWritten) {
    writeTuning("a.json", {{"volume", 11}});
    noteFiles();
    const HostRun result = process({"--tuning", path("a.json"), "--strict"});
    EXPECT_EQ(result.exit_code, kSettingsDiffer);
    EXPECT_EQ(linesOf(result.err).back(),
              "se_host: nothing is written, because of --strict; correct the settings");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(files(), (std::vector<std::string>{"a.json", "in.wav"}));
}

TEST_F(ProcessTuning, OfABrokenFileIsRefused) {
    writeText("a.json", "{");
    noteFiles();
    expectRefused(process({"--tuning", path("a.json")}), kFailure, "is not a tuning file: it is not JSON");
}

TEST_F(ProcessTuning, IsNotOverwritten) {
    dump("a.json");
    noteFiles();
    expectRefused(run({"process", path("in.wav"), path("a.json"), "--tuning", path("a.json")}), kWrongUsage,
                  "output '" + path("a.json") + "' is one of the inputs");
    EXPECT_TRUE(readJson("a.json").is_object());
}

TEST_F(ProcessTuning, AndAComparisonWithoutItExcludeEachOther) {
    dump("a.json");
    noteFiles();
    expectRefused(process({"--tuning", path("a.json"), "--compare-routines"}), kWrongUsage, "--tuning");
}

}  // namespace
}  // namespace se_host_test
