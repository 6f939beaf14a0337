// Which engine runs: by device model, by name, by property.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Settings : public HostTest {
  protected:
    Settings() { writeSound(path("in.wav"), patternedSound(320)); }

    std::string build(std::vector<std::string> more) {
        more.push_back("--json");
        const HostRun result = process(more);
        expectDone(result);
        return nlohmann::json::parse(result.out)["engine"]["build"];
    }
};

TEST_F(Settings, ByDefaultTheBeamFormingBuildRuns) {
    EXPECT_EQ(build({}), "se_lib_beamv1.14");
}

TEST_F(Settings, TheDeviceModelHasABuildOfItsOwn) {
    EXPECT_EQ(build({"--device-model"}), "se_lib_harborv006");
}

TEST_F(Settings, ANamedBuildRuns) {
    EXPECT_EQ(build({"--engine", "se_lib_harborv006"}), "se_lib_harborv006");
}

TEST_F(Settings, ANamedBuildHasPriorityOverTheDeviceModel) {
    EXPECT_EQ(build({"--device-model", "--engine", "se_lib_beamv1.14"}), "se_lib_beamv1.14");
}

TEST_F(Settings, APropertyIsSetBeforeTheEngineStarts) {
    EXPECT_EQ(build({"--set", "config/is_harbor=1"}), "se_lib_harborv006");
}

TEST_F(Settings, TheLastOfSeveralSettingsHolds) {
    EXPECT_EQ(build({"--set", "config/is_harbor=1", "--set", "config/is_harbor=0"}), "se_lib_beamv1.14");
}

TEST_F(Settings, TheEnginesOwnRoutinesRunToo) {
    EXPECT_EQ(build({"--engine-routines"}), "se_lib_beamv1.14");
}

// The probe engine returns the far end times the gain, plus the factor.
TEST_F(Settings, GainAndEchoSafetyFactorReachTheEngine) {
    writeSound(path("far.wav"), Sound{16000, 1, std::vector<int16_t>(320, 8000)});
    expectDone(process({"--engine", "test_engines/host_probe", "--far-end", path("far.wav"), "--gain", "512",
                        "--echo-safety-factor", "3"}));
    EXPECT_EQ(readSound(path("out.wav")).samples, std::vector<int16_t>(320, 4003));
}

TEST_F(Settings, AGainNeedsTheStartThatSetsIt) {
    noteFiles();
    expectRefused(process({"--engine-routines", "--gain", "512"}), kWrongUsage, "--gain");
}

}  // namespace
}  // namespace se_host_test
