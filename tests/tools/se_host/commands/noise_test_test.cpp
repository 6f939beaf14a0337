// `se_host noise-test`: the results it writes and shows, and what it refuses.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

constexpr size_t kEnough = 160 * 203;  // the length of the reference engine's test

class NoiseTestCommand : public HostTest {
  protected:
    HostRun test(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"noise-test", path("out.txt"), "--seconds", "2.1"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    HostRun testOf(const Sound& recording, const std::vector<std::string>& more = {}) {
        writeSound(path("in.wav"), recording);
        noteFiles();
        std::vector<std::string> arguments{"noise-test", path("out.txt"), "--recording", path("in.wav")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    static nlohmann::json rowsOf(const HostRun& run) { return nlohmann::json::parse(run.out)["rows"]; }

    std::string text(const std::string& name) const {
        std::ostringstream content;
        content << std::ifstream(path(name)).rdbuf();
        return content.str();
    }
};

void expectAllNear(const nlohmann::json& rows, double level) {
    ASSERT_EQ(rows.size(), 30u);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), 6u);
        for (const double value : row) EXPECT_NEAR(value, level, 1.5);
    }
}

// A band of 250 Hz has a thirty-second of the power of white noise.
const double kShareOfABand = 10 * std::log10(250.0 / 8000);

TEST_F(NoiseTestCommand, MeasuresTheSensorNoiseOfTheSimulatedArray) {
    const HostRun quiet = test({"--json"});
    expectDone(quiet);
    expectAllNear(rowsOf(quiet), -65 + kShareOfABand);
    const HostRun loud = test({"--json", "--sensor-noise", "-40"});
    expectDone(loud);
    expectAllNear(rowsOf(loud), -40 + kShareOfABand);
}

TEST_F(NoiseTestCommand, HasNoTalkerUnlessAskedFor) {
    const HostRun silent = test({"--json", "--sensor-noise", "none"});
    expectDone(silent);
    for (const auto& row : rowsOf(silent)) {
        for (const double value : row) EXPECT_EQ(value, -120);
    }
    const HostRun talking = test({"--json", "--level", "-26"});
    expectDone(talking);
    EXPECT_GT(rowsOf(talking)[2][0], -60);
}

TEST_F(NoiseTestCommand, DistinguishesTheMicrophonesOfARecording) {
    Sound recording = patternedSound(kEnough);
    for (size_t i = 3; i < recording.samples.size(); i += 8) {
        recording.samples[i] = static_cast<int16_t>(recording.samples[i] / 10);
    }
    const HostRun result = testOf(recording, {"--json"});
    expectDone(result);
    EXPECT_EQ(nlohmann::json::parse(result.out)["columns"], (std::vector<int>{2, 3, 4, 5, 6, 7}));
    const double full = 10 * std::log10(1.0 / 3) + kShareOfABand;
    for (const auto& row : rowsOf(result)) {
        EXPECT_NEAR(row[1], full - 20, 1.5);
        for (const size_t m : {0u, 2u, 3u, 4u, 5u}) EXPECT_NEAR(row[m], full, 1.5) << m;
    }
}

TEST_F(NoiseTestCommand, NamesADeadCentreMicrophone) {
    Sound recording = patternedSound(kEnough);
    for (size_t i = 1; i < recording.samples.size(); i += 8) recording.samples[i] = 0;
    const HostRun text = testOf(recording);
    expectDone(text);
    EXPECT_NE(text.out.find("\n  levels    mic 1 silent  mic 2 -4.8 "), std::string::npos) << text.out;
    EXPECT_NE(text.out.find("\n  note      microphone 1 is silent: it is dead or not connected\n"),
              std::string::npos);
    const nlohmann::json report = nlohmann::json::parse(testOf(recording, {"--json"}).out);
    EXPECT_EQ(report["findings"].size(), 1u);
    EXPECT_TRUE(report["microphones"][0]["rms_dbfs"].is_null());
}

TEST_F(NoiseTestCommand, FindsNothingWrongWithHealthyMicrophones) {
    const HostRun result = test({"--json", "--diffuse-noise", "-50"});
    expectDone(result);
    EXPECT_EQ(nlohmann::json::parse(result.out)["findings"], nlohmann::json::array());
}

TEST_F(NoiseTestCommand, DrawsSmallDifferencesSmall) {
    expectDone(test({"--plot", path("healthy.svg")}));
    // 30 dB around the microphones, all of which have -80 dBFS a band.
    for (const char* tick : {">-90<", ">-70<"}) {
        EXPECT_NE(text("healthy.svg").find(tick), std::string::npos) << tick;
    }
}

TEST_F(NoiseTestCommand, WritesOneMicrophoneAfterTheOther) {
    const HostRun result = testOf(patternedSound(kEnough), {"--json"});
    expectDone(result);
    const nlohmann::json rows = rowsOf(result);
    std::string expected;
    const size_t column_of[] = {1, 0, 3, 4, 5, 2};  // in the JSON, by the engine's number
    for (size_t m = 0; m < 6; ++m) {
        expected += "Microphone " + std::to_string(m) + "\n";
        for (size_t k = 0; k < 30; ++k) {
            char line[64];
            std::snprintf(line, sizeof(line), "%zu %f\n", k, rows[k][column_of[m]].get<double>());
            expected += line;
        }
    }
    EXPECT_EQ(text("out.txt"), expected);
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.txt"}));
}

TEST_F(NoiseTestCommand, EndsWhenTheTestIsComplete) {
    const HostRun result = testOf(patternedSound(3 * kEnough), {"--json"});
    expectDone(result);
    const nlohmann::json report = nlohmann::json::parse(result.out);
    EXPECT_EQ(report["blocks"], 203);
    EXPECT_EQ(report["engine"]["build"], "se_lib_beamv1.14");
    EXPECT_EQ(report["sound"], path("in.wav"));
}

TEST_F(NoiseTestCommand, PrintsATableOfThirtyRows) {
    const HostRun result = test();
    expectDone(result);
    EXPECT_NE(result.out.find("wrote " + path("out.txt") + "\n"), std::string::npos);
    EXPECT_NE(result.out.find("  test      203 blocks, 2.03 s\n"), std::string::npos);
    EXPECT_NE(result.out.find("\n  row        mic 2      mic 3 "), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("\n   29  "), std::string::npos);
}

TEST_F(NoiseTestCommand, QuietPrintsNothing) {
    const HostRun result = test({"--quiet"});
    expectDone(result);
    EXPECT_EQ(result.out, "");
}

TEST_F(NoiseTestCommand, RunsOnTheBuildOfTheDeviceModelToo) {
    const HostRun result = test({"--device-model", "--json"});
    expectDone(result);
    EXPECT_EQ(nlohmann::json::parse(result.out)["engine"]["build"], "se_lib_harborv006");
}

TEST_F(NoiseTestCommand, RefusesASoundThatIsShorterThanTheTest) {
    expectRefused(testOf(patternedSound(kEnough - 1)), kFailure,
                  "still running at the end of the sound, after 2.03 s; give it more");
}

TEST_F(NoiseTestCommand, RefusesAnEngineWithoutTheTest) {
    expectRefused(testOf(patternedSound(kEnough), {"--engine", "test_engines/host_probe"}), kFailure,
                  "engine 'test_engines/host_probe' has no noise test; choose another build");
}

TEST_F(NoiseTestCommand, RefusesOptionsOfTheSimulationForARecording) {
    expectRefused(testOf(patternedSound(kEnough), {"--sensor-noise", "-40"}), kWrongUsage, "--sensor-noise");
}

TEST_F(NoiseTestCommand, RefusesASceneThatCannotBe) {
    noteFiles();
    expectRefused(test({"--diffuse-noise", "40"}), kWrongUsage, "--diffuse-noise");
}

TEST_F(NoiseTestCommand, RefusesARecordingOfTooFewChannels) {
    expectRefused(testOf(patternedSound(kEnough, 2)), kFailure, "has 2 channels, but the engine needs 8");
}

TEST_F(NoiseTestCommand, RefusesToWriteOverTheRecording) {
    writeSound(path("out.txt"), patternedSound(kEnough));
    noteFiles();
    expectRefused(run({"noise-test", path("out.txt"), "--recording", path("out.txt")}), kWrongUsage,
                  "is one of the inputs; give it another name");
}

TEST_F(NoiseTestCommand, RefusesAFolderThatIsNotThere) {
    noteFiles();
    expectRefused(run({"noise-test", path("nowhere/out.txt")}), kFailure, "nowhere/out.txt': No such file");
}

TEST_F(NoiseTestCommand, RefusesAnEngineWithoutResults) {
    ::setenv("SE_HOSTILE", "noise-results null", 1);
    expectRefused(testOf(patternedSound(kEnough), {"--engine", "test_engines/hostile"}), kFailure,
                  "engine 'test_engines/hostile' gives no results of the noise test; choose another build");
}

TEST_F(NoiseTestCommand, KeepsOlderResultsWhenItFails) {
    writeText("out.txt", "older");
    EXPECT_EQ(testOf(patternedSound(160)).exit_code, kFailure);
    EXPECT_EQ(text("out.txt"), "older");
}

}  // namespace
}  // namespace se_host_test
