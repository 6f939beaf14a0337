// `se_host intelligibility`: the figures of two sounds, and what it refuses.
#include <cmath>
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

constexpr size_t kLag = 800;  // 50 ms

// A voice of 4 s, alone in a mono file and in a noise.
class IntelligibilityCommand : public HostTest {
  protected:
    IntelligibilityCommand() {
        expectDone(run({"scene", path("room.wav"), "--seconds", "4", "--diffuse-noise", "-40", "--parts",
                        path("room"), "--quiet"}));
        clean_ = {16000, 1, channelOf(readSound(path("room-talker.wav")), 1)};
        writeSound(path("clean.wav"), clean_);
    }

    HostRun compare(const std::string& clean, const std::string& heard,
                    const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"intelligibility", path(clean), path(heard)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    nlohmann::json figures(const std::string& clean, const std::string& heard,
                           std::vector<std::string> more = {}) const {
        more.emplace_back("--json");
        const HostRun result = compare(clean, heard, more);
        expectDone(result);
        return nlohmann::json::parse(result.out);
    }

    Sound clean_;
};

TEST_F(IntelligibilityCommand, OfTheSameSoundIsOne) {
    const nlohmann::json answer = figures("clean.wav", "clean.wav");
    EXPECT_NEAR(answer["stoi"], 1, 1e-6);
    EXPECT_EQ(answer["lag_ms"], 0);
    EXPECT_EQ(answer["seconds"], 4);
}

TEST_F(IntelligibilityCommand, ALagIsFoundAndRemoved) {
    Sound late = clean_;
    late.samples.insert(late.samples.begin(), kLag, 0);
    writeSound(path("late.wav"), late);
    const nlohmann::json answer = figures("clean.wav", "late.wav");
    EXPECT_EQ(answer["lag_ms"], 50);
    EXPECT_GT(answer["stoi"], 0.999);
    EXPECT_GT(answer["si_sdr_db"], 50);
}

TEST_F(IntelligibilityCommand, FallsInNoise) {
    const nlohmann::json answer =
        figures("room-talker.wav", "room.wav", {"--clean-channel", "1", "--channel", "1"});
    EXPECT_LT(answer["stoi"], 0.97);
    EXPECT_GT(answer["stoi"], 0.5);
}

TEST_F(IntelligibilityCommand, TheTextHasTheFigures) {
    const HostRun result = compare("clean.wav", "clean.wav");
    expectDone(result);
    EXPECT_NE(result.out.find("  sound            4.00 s, 0 ms later\n"
                              "  intelligibility  1.000 (short-time objective)\n"),
              std::string::npos)
        << result.out;
}

TEST_F(IntelligibilityCommand, RefusesAChannelThatTheSoundDoesNotHave) {
    noteFiles();
    expectRefused(compare("clean.wav", "clean.wav", {"--channel", "1"}), kWrongUsage,
                  "--channel 1 does not exist");
    expectRefused(compare("clean.wav", "clean.wav", {"--clean-channel", "2"}), kWrongUsage,
                  "--clean-channel 2 does not exist");
}

TEST_F(IntelligibilityCommand, RefusesAnotherSound) {
    noteFiles();
    expectRefused(compare("clean.wav", "room-noise.wav", {"--channel", "1"}), kFailure, "nothing of '");
}

TEST_F(IntelligibilityCommand, RefusesTooLittleSpeech) {
    Sound start = clean_;
    start.samples.resize(3000);
    writeSound(path("start.wav"), start);
    noteFiles();
    expectRefused(compare("start.wav", "start.wav"), kFailure, "give");
}

}  // namespace
}  // namespace se_host_test
