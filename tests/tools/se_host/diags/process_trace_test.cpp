// `se_host process --trace-diags`: a table of diagnostics along a run.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

class ProcessTrace : public DiagsTest {
  protected:
    ProcessTrace() {
        makeRecording(3);
        noteFiles();
    }

    std::string trace(const std::string& pattern, const Words& more = {}) const {
        Words words{"--trace-diags", pattern, path("t.csv")};
        words.insert(words.end(), more.begin(), more.end());
        expectDone(process(words));
        return readText("t.csv");
    }
};

TEST_F(ProcessTrace, HasAHeaderAndALineForEachBlock) {
    EXPECT_EQ(trace("sesys_*"),
              "seconds,sesys_sample_clock,sesys_blocks\n0.01,160,1\n0.02,320,2\n0.03,480,3\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav", "t.csv"}));
}

TEST_F(ProcessTrace, HasAColumnForEachElementOfAnArray) {
    const auto lines = linesOf(trace("mmfx_azimuth_deg"));
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].substr(0, 48), "seconds,mmfx_azimuth_deg[0],mmfx_azimuth_deg[1],");
    EXPECT_EQ(lines[1], "0.01,0,30,60,90,120,150,180,210,240,270,300,330");
}

TEST_F(ProcessTrace, HasAnEnumAsItsNumber) {
    EXPECT_EQ(trace("s*_s[to][au][tr]*e"), "seconds,seout_source,sent_state\n0.01,0,0\n0.02,0,0\n0.03,0,0\n");
}

TEST_F(ProcessTrace, LeavesCellsOfWhatIsNotFiniteEmpty) {
    EXPECT_EQ(linesOf(trace("*not_*", {"--engine", kOddEngine}))[1], "0.01,,1.5,,");
}

TEST_F(ProcessTrace, ShowsTheTuningAtWork) {
    writeTuning("a.json", {{"seout_gain_q10", 900}});
    EXPECT_EQ(linesOf(trace("seout_gain_q10", {"--tuning", path("a.json")}))[1], "0.01,900");
}

TEST_F(ProcessTrace, DoesNotChangeTheOutput) {
    expectDone(process());
    const auto without = readSound(path("out.wav")).samples;
    trace("*");
    EXPECT_EQ(readSound(path("out.wav")).samples, without);
}

TEST_F(ProcessTrace, OfNothingIsRefused) {
    expectRefused(process({"--trace-diags", "x*", path("t.csv")}), kWrongUsage, "no diagnostic matches 'x*'");
}

TEST_F(ProcessTrace, NeedsAFile) {
    expectRefused(process({"--trace-diags", "sesys_*"}), kWrongUsage, "--trace-diags");
}

TEST_F(ProcessTrace, GoesToOneFile) {
    expectRefused(
        process({"--trace-diags", "sesys_*", path("t.csv"), "--trace-diags", "seout_*", path("u.csv")}),
        kWrongUsage, "--trace-diags");
}

TEST_F(ProcessTrace, OverTheRecordingIsRefused) {
    expectRefused(process({"--trace-diags", "sesys_*", path("in.wav")}), kWrongUsage, "in.wav");
    EXPECT_EQ(readSound(path("in.wav")).frames(), 480u);
}

TEST_F(ProcessTrace, OverTheTuningIsRefused) {
    dump("a.json");
    noteFiles();
    expectRefused(process({"--tuning", path("a.json"), "--trace-diags", "sesys_*", path("a.json")}),
                  kWrongUsage, "a.json");
}

TEST_F(ProcessTrace, OverTheOutputIsRefused) {
    expectRefused(process({"--trace-diags", "sesys_*", path("out.wav")}), kWrongUsage, "out.wav");
}

TEST_F(ProcessTrace, ToAPlaceThatCannotBeWrittenIsRefused) {
    expectRefused(process({"--trace-diags", "sesys_*", path("nowhere/t.csv")}), kFailure, "nowhere/t.csv");
}

TEST_F(ProcessTrace, OfARunThatFailsLeavesAnOlderOneAlone) {
    writeText("t.csv", "old");
    writeText("in.wav", "no sound");
    noteFiles();
    expectRefused(process({"--trace-diags", "sesys_*", path("t.csv")}), kFailure, "in.wav");
    EXPECT_EQ(readText("t.csv"), "old");
}

}  // namespace
}  // namespace se_host_test
