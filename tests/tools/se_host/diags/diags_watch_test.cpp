// `se_host diags watch`: changes along a recording.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

class DiagsWatch : public DiagsTest {
  protected:
    DiagsWatch() {
        makeRecording(3);
        noteFiles();
    }

    std::string watch(Words more) const {
        more.insert(more.begin(), {"watch", path("in.wav")});
        return printed(more);
    }
};

TEST_F(DiagsWatch, PrintsALineForEachChange) {
    EXPECT_EQ(watch({"sesys_blocks"}),
              "    0.01 s  sesys_blocks: 0 -> 1\n"
              "    0.02 s  sesys_blocks: 1 -> 2\n"
              "    0.03 s  sesys_blocks: 2 -> 3\n");
}

TEST_F(DiagsWatch, PrintsNothingForWhatStays) {
    EXPECT_EQ(watch({"se*_q10"}), "");
}

TEST_F(DiagsWatch, WatchesAllWithoutAPattern) {
    const std::string lines = watch({});
    for (const char* name : {"sesys_blocks: 0 -> 1", "semic_peak: [0,0,0,0,0,0,0] -> ["}) {
        EXPECT_NE(lines.find(name), std::string::npos) << name;
    }
}

TEST_F(DiagsWatch, ShowsWhatATuningDoes) {
    writeTuning("a.json", {{"mmfx_restart_search", 1}});
    EXPECT_EQ(watch({"mmfx_restart_search", "--tuning", path("a.json")}),
              "    0.01 s  mmfx_restart_search: 1 -> 0\n");
}

TEST_F(DiagsWatch, PrintsNothingForWhatStaysNotFinite) {
    EXPECT_EQ(watch({"*not_*", "--engine", kOddEngine}), "");
}

TEST_F(DiagsWatch, OfNothingIsRefused) {
    expectRefused(diags({"watch", path("in.wav"), "x*"}), kWrongUsage, "no diagnostic matches 'x*'");
}

TEST_F(DiagsWatch, NeedsARecording) {
    expectRefused(diags({"watch"}), kWrongUsage, "IN is required");
}

TEST_F(DiagsWatch, NamesARecordingThatIsNotThere) {
    expectRefused(diags({"watch", path("nothing.wav")}), kFailure, "nothing.wav");
}

}  // namespace
}  // namespace se_host_test
