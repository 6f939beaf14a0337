// `se_host diags get`: single values.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::ordered_json;

class DiagsGet : public DiagsTest {};

TEST_F(DiagsGet, PrintsALineEachInTheOrderAskedFor) {
    EXPECT_EQ(printed({"get", "seout_gain_q10", "mmfx_look_mode", "aec_bypass", "seout_level_dbfs"}),
              "seout_gain_q10: 1024\nmmfx_look_mode: 0 - All directions\naec_bypass: false\n"
              "seout_level_dbfs: 0.0\n");
}

TEST_F(DiagsGet, PrintsJsonWithTheTypeOfEach) {
    EXPECT_EQ(printedJson({"get", "--json", "sent_state", "semic_peak", "noise_reduction_bypass"}),
              Json::parse(R"({"sent_state": "0 - Idle", "semic_peak": [0,0,0,0,0,0,0],
                              "noise_reduction_bypass": false})"));
}

TEST_F(DiagsGet, TakesPathsToo) {
    EXPECT_EQ(printed({"get", "diags/basic/sesys_blocks"}), "diags/basic/sesys_blocks: 0\n");
}

TEST_F(DiagsGet, PrintsTheValuesAfterARecording) {
    makeRecording(12);
    EXPECT_EQ(printed({"get", "sesys_blocks", "sesys_sample_clock", "--recording", path("in.wav")}),
              "sesys_blocks: 12\nsesys_sample_clock: 1920\n");
}

TEST_F(DiagsGet, ProcessesTheFarEndOfTheRecording) {
    makeRecording(3);
    EXPECT_EQ(printed({"get", "sercv_far_end_energy", "--recording", path("in.wav")}),
              "sercv_far_end_energy: 0\n");
    EXPECT_NE(
        printed({"get", "sercv_far_end_energy", "--recording", path("in.wav"), "--far-end-channel", "0"}),
        "sercv_far_end_energy: 0\n");
}

TEST_F(DiagsGet, ReportsWhatHasNoValue) {
    EXPECT_EQ(printed({"get", "not_a_number", "large", "noise_reduction_bypass", "--engine", kOddEngine}),
              "not_a_number: none\nlarge: 5000000000\nnoise_reduction_bypass: none\n");
}

TEST_F(DiagsGet, NamesAnUnknownOneBeforeTheRecordingIsRead) {
    expectRefused(diags({"get", "seout_gain_q10", "volume", "--recording", path("nothing.wav")}), kWrongUsage,
                  "the engine has no diagnostic 'volume'; 'se_host diags list' shows them");
}

TEST_F(DiagsGet, NeedsAName) {
    expectRefused(diags({"get"}), kWrongUsage, "NAME is required; see 'se_host diags get --help'");
}

}  // namespace
}  // namespace se_host_test
