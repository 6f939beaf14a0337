// The array of a file: a talker is found with it, and a file that cannot be used is refused.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

constexpr int kBuiltIn = 0, kOfFile = 1, kRefused = 2;  // of the diagnostic mmfx_array

// Larger than the built-in arrays, and its channels stand in another order.
constexpr const char* kOtherArray =
    "# a bar of a conference table\n"
    "\n"
    "2  30    0   # behind the first bracket\n"
    "3  60    0\n"
    "4  90    0\r\n"
    "5  30  180\n"
    "6\t60\t-180\n"
    "7  45.5  90\n";

constexpr int kChannelOf[] = {3, 2, 5, 6, 7, 4};

// In the order of these channels.
std::vector<se_scene::MicrophonePlace> otherArray() {
    return {{0.06, 0}, {0.03, 0}, {0.03, 180}, {0.06, 180}, {0.0455, 90}, {0.09, 0}};
}

class ArrayFile : public testing::TestWithParam<Build> {
  protected:
    ArrayFile() : engine(GetParam()) {}
    ~ArrayFile() override { std::remove(path_.c_str()); }

    // The engine starts with this file.
    void startWith(const std::string& text) {
        std::ofstream(path_, std::ios::binary) << text;
        ::setenv("SE_ARRAY_FILE", path_.c_str(), 1);
        engine.MMIfInit(0);
    }

    int source() const { return engine.SEDiagGetEnumAsInt(engine.diag("mmfx_array")); }

    const int32_t* steeringTowards(int location) const {
        engine.MMIfSetManualLocation(location, 0);
        engine.processAlike(Samples(kBlock, 0));
        return engine.SEDiagGetInt32Array(engine.diag("mmfx_steering_delay_ns"));
    }

    // Where the engine sees a talker that the microphones of `kOtherArray` recorded.
    int locationOfTalkerAt(double azimuth_deg) const {
        se_scene::SceneOptions options;
        options.seconds = 3;
        options.talker_azimuth_deg = azimuth_deg;
        options.circle = otherArray();
        engine.process(se_scene::makeScene(options).mixture());
        return engine.location();
    }

    EngineUnderTest engine;

  private:
    std::string path_ = testing::TempDir() + "array_file_" + std::to_string(::getpid());
};
INSTANTIATE_FOR_EACH_BUILD(ArrayFile);

struct Refusal {
    const char* text;
    const char* reason;
};

constexpr Refusal kRefusals[] = {
    {"", "channel 2 is missing"},
    {"2 40 0\n3 40 60\n4 40 120\n5 40 180\n6 40 240\n", "channel 7 is missing"},
    {"2 40 0\n2 40 60\n", "line 2: channel 2 comes twice"},
    {"1 40 0\n", "line 1: channel 1 is not one of 2 to 7"},
    {"# a comment\n8 40 0\n", "line 2: channel 8 is not one of 2 to 7"},
    {"2 40\n", "line 1: three numbers are needed: channel, millimetres, degrees"},
    {"2 40 0 0\n", "line 1: three numbers are needed: channel, millimetres, degrees"},
    {"two 40 0\n", "line 1: three numbers are needed: channel, millimetres, degrees"},
    {"2 40,5 0\n", "line 1: three numbers are needed: channel, millimetres, degrees"},
    {"2 9.9 0\n", "line 1: the distance must be between 10 and 100 mm"},
    {"2 101 0\n", "line 1: the distance must be between 10 and 100 mm"},
    {"2 40 361\n", "line 1: the azimuth must be between -360 and 360 degrees"},
    {"2 40 0\n3 40 60\n4 40 120\n5 40 180\n6 40 240\n7 40 64\n",
     "the channels 3 and 7 are less than 5 mm apart"},
};

}  // namespace

TEST_P(ArrayFile, GivesTheSteeringOfEachMicrophone) {
    startWith(kOtherArray);
    EXPECT_EQ(source(), kOfFile);
    const int32_t* delays = steeringTowards(1);
    EXPECT_EQ(delays[0], 0);
    const auto places = otherArray();
    for (size_t m = 0; m < places.size(); ++m) {
        const double angle = (30 - places[m].azimuth_deg) * M_PI / 180;
        EXPECT_NEAR(delays[kChannelOf[m] - 1], places[m].distance_m * std::cos(angle) / 343 * 1e9, 1) << m;
    }
}

TEST_P(ArrayFile, LetsTheEngineFindATalkerWithAnotherArray) {
    startWith(kOtherArray);
    EXPECT_EQ(locationOfTalkerAt(120), 4);
}

TEST_P(ArrayFile, IsNeededForThat) {
    engine.MMIfInit(0);
    EXPECT_EQ(source(), kBuiltIn);
    EXPECT_NE(locationOfTalkerAt(120), 4);
}

TEST_P(ArrayFile, OfTheBuiltInArrayChangesLittle) {
    se_scene::SceneOptions options;
    options.seconds = 2;
    options.array_radius_m = arrayRadiusOf(GetParam());
    const se_scene::MicrophoneRows rows = se_scene::makeScene(options).mixture();
    engine.MMIfInit(0);
    const Samples built_in = engine.process(rows);
    const std::string radius = std::to_string(1000 * arrayRadiusOf(GetParam()));
    startWith("3 " + radius + " 0\n2 " + radius + " 60\n5 " + radius + " 120\n6 " + radius + " 180\n7 " +
              radius + " 240\n4 " + radius + " 300\n");
    EXPECT_EQ(source(), kOfFile);
    const Samples of_file = engine.process(rows);
    for (size_t i = 0; i < built_in.size(); ++i) ASSERT_NEAR(built_in[i], of_file[i], 8) << i;
}

TEST_P(ArrayFile, ThatCannotBeUsedIsRefusedInALine) {
    for (const Refusal& refusal : kRefusals) {
        testing::internal::CaptureStderr();
        startWith(refusal.text);
        const std::string line = testing::internal::GetCapturedStderr();
        EXPECT_EQ(line, std::string("SE_ARRAY_FILE '") + std::getenv("SE_ARRAY_FILE") +
                            "': " + refusal.reason + "; the built-in array is used\n");
        EXPECT_EQ(source(), kRefused) << refusal.text;
        EXPECT_NEAR(steeringTowards(0)[3 - 1], arrayRadiusOf(GetParam()) / 343 * 1e9, 1);
    }
}

TEST_P(ArrayFile, ThatIsNotThereIsRefused) {
    ::setenv("SE_ARRAY_FILE", "/nowhere/array", 1);
    testing::internal::CaptureStderr();
    engine.MMIfInit(0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "SE_ARRAY_FILE '/nowhere/array': No such file or directory; the built-in array is used\n");
}

TEST_P(ArrayFile, ThatIsADeviceOrAPipeIsRefused) {
    const std::string pipe = testing::TempDir() + "array_pipe_" + std::to_string(::getpid());
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {std::string("/dev/zero"), pipe}) {
        ::setenv("SE_ARRAY_FILE", path.c_str(), 1);
        testing::internal::CaptureStderr();
        engine.MMIfInit(0);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "SE_ARRAY_FILE '" + path + "': it is no regular file; the built-in array is used\n");
    }
    ::unlink(pipe.c_str());
}

TEST_P(ArrayFile, ThatIsTooLargeIsRefused) {
    testing::internal::CaptureStderr();
    startWith(std::string(65537, '#'));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              std::string("SE_ARRAY_FILE '") + std::getenv("SE_ARRAY_FILE") +
                  "': it is larger than 64 KiB; the built-in array is used\n");
}
