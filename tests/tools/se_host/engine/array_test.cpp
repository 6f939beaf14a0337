// --array: another array than the engine build's own.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

constexpr const char* kBar =
    "2 30 0  # a bar, and a microphone before it\n3 60 0\n4 90 0\n5 30 180\n6 60 180\n7 45 90\n";

struct Refusal {
    const char* text;
    const char* reason;
};

constexpr Refusal kRefusals[] = {
    {"2 40 0\n2 40 60\n", "line 2: channel 2 comes twice"},
    {"2 40 0\n3 40 60\n4 40 120\n5 40 180\n6 40 240\n", "channel 7 is missing"},
    {"\n8 40 0\n", "line 2: channel 8 is not one of 2 to 7"},
    {"2 40\n", "line 1: three numbers are needed: channel, millimetres, degrees"},
    {"2 40 north\n", "line 1: three numbers are needed"},
    {"2 40 0 0\n", "line 1: three numbers are needed"},
    {"2 500 0\n", "line 1: the distance must be between 10 and 100 mm"},
    {"2 nan 0\n", "line 1: three numbers are needed"},
    {"2 40 400\n", "line 1: the azimuth must be between -360 and 360 degrees"},
    {"2 40 0\n3 40 60\n4 40 120\n5 40 180\n6 40 240\n7 40 64\n",
     "the channels 3 and 7 are less than 5 mm apart"},
};

class Array : public HostTest {
  protected:
    Array() { writeText("bar.txt", kBar); }

    void recordTalkerAt(int azimuth) {
        expectDone(run({"scene", path("in.wav"), "--azimuth", std::to_string(azimuth), "--seconds", "4",
                        "--array", path("bar.txt")}));
        noteFiles();
    }

    int foundAt(const std::vector<std::string>& more) const {
        std::vector<std::string> options{"--json"};
        options.insert(options.end(), more.begin(), more.end());
        const HostRun result = process(options);
        expectDone(result);
        return nlohmann::json::parse(result.out)["talker"]["azimuth_degrees"];
    }
};

TEST_F(Array, OfAFileFindsTheTalkerThatItRecorded) {
    recordTalkerAt(120);
    EXPECT_EQ(foundAt({"--array", path("bar.txt")}), 120);
    EXPECT_EQ(foundAt({"--array", path("bar.txt"), "--device-model"}), 120);
}

TEST_F(Array, OfAnotherFileDoesNot) {
    recordTalkerAt(120);
    EXPECT_NE(foundAt({}), 120);
    writeText("turned.txt", "2 30 180\n3 60 180\n4 90 180\n5 30 0\n6 60 0\n7 45 90\n");
    EXPECT_EQ(foundAt({"--array", path("turned.txt")}), 60);
}

TEST_F(Array, MayComeFromAPipe) {
    recordTalkerAt(120);
    const HostRun result = shell(
        "se_host process in.wav out.wav --array - --json < bar.txt && cat bar.txt | se_host diags get "
        "mmfx_array "
        "--array /dev/stdin");
    expectDone(result);
    EXPECT_NE(result.out.find("\"azimuth_degrees\": 120"), std::string::npos);
    EXPECT_NE(result.out.find("mmfx_array: 1 - File\n"), std::string::npos) << result.out;
}

TEST_F(Array, ReachesBothRunsOfAComparison) {
    recordTalkerAt(120);
    const HostRun result = process({"--array", path("bar.txt"), "--compare-routines", "--json"});
    expectDone(result);
    EXPECT_LE(nlohmann::json::parse(result.out)["engine_routines"]["largest_difference"], 60);
}

TEST_F(Array, IsSimulatedByTheNoiseTest) {
    expectDone(run({"noise-test", path("out.txt"), "--array", path("bar.txt"), "--seconds", "2.1"}));
}

TEST_F(Array, ThatCannotBeUsedIsRefused) {
    writeSound(path("in.wav"), patternedSound(1600));
    for (const Refusal& refusal : kRefusals) {
        writeText("bad.txt", refusal.text);
        noteFiles();
        expectRefused(process({"--array", path("bad.txt")}), kFailure,
                      "array '" + path("bad.txt") + "': " + refusal.reason);
        expectRefused(run({"scene", path("scene.wav"), "--array", path("bad.txt")}), kFailure,
                      refusal.reason);
    }
}

TEST_F(Array, ThatIsNotThereIsRefused) {
    noteFiles();
    expectRefused(run({"diags", "get", "mmfx_array", "--array", path("nowhere.txt")}), kFailure,
                  "nowhere.txt");
}

TEST_F(Array, IsRefusedWithAnEngineThatTakesNone) {
    writeSound(path("in.wav"), patternedSound(1600));
    noteFiles();
    expectRefused(process({"--array", path("bar.txt"), "--engine", "test_engines/host_probe"}), kFailure,
                  "engine 'test_engines/host_probe' takes no other array than its own; leave out --array");
}

TEST_F(Array, IsNotThatOfTheDeviceModelToo) {
    noteFiles();
    expectRefused(run({"scene", path("out.wav"), "--array", path("bar.txt"), "--device-model"}), kWrongUsage,
                  "--array");
}

}  // namespace
}  // namespace se_host_test
