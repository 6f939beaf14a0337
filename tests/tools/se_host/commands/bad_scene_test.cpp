// `se_host scene` with invalid options: refused in one line that names the option, and nothing is written.
#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class BadScene : public HostTest {
  protected:
    void expectRefusal(const std::vector<std::string>& more, int exit_code, const std::string& mention) {
        noteFiles();
        std::vector<std::string> arguments{"scene", path("out.wav"), "--seconds", "1"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        expectRefused(run(arguments), exit_code, mention);
    }
};

TEST_F(BadScene, NoOutput) {
    noteFiles();
    expectRefused(run({"scene"}), kWrongUsage, "OUT is required");
}

TEST_F(BadScene, ATalkerBeyondTheWall) {
    expectRefusal({"--reverberation", "0.2", "--azimuth", "0", "--distance", "4"}, kWrongUsage,
                  "--distance is 4, but must be between 0 and 3.68");
}

TEST_F(BadScene, ALevelAboveFullScale) {
    expectRefusal({"--level", "3"}, kWrongUsage, "--level is 3, but must be between -120 and 0");
    expectRefusal({"--echo", "3"}, kWrongUsage, "--echo is 3, but must be between -120 and 0");
}

TEST_F(BadScene, ALevelThatIsNoNumber) {
    expectRefusal({"--sensor-noise", "loud"}, kWrongUsage, "--sensor-noise = loud");
}

TEST_F(BadScene, ARoomTooSmall) {
    expectRefusal({"--reverberation", "0.2", "--room", "1", "4", "2.5"}, kWrongUsage,
                  "--room's length is 1, but must be between 3 and 30");
}

TEST_F(BadScene, ARoomWithoutReverberation) {
    expectRefusal({"--room", "5", "4", "2.5"}, kWrongUsage, "--room requires --reverberation");
}

TEST_F(BadScene, AnUnknownColour) {
    expectRefusal({"--diffuse-colour", "blue"}, kWrongUsage,
                  "--diffuse-colour: blue not in {white,pink,babble}");
}

TEST_F(BadScene, TurnsWithoutASecondTalker) {
    expectRefusal({"--turn", "0.5"}, kWrongUsage, "--turn requires --second-azimuth");
}

TEST_F(BadScene, AJumpBackWithoutAJump) {
    expectRefusal({"--echo", "-30", "--echo-jump-back", "0.5"}, kWrongUsage,
                  "--echo-jump-back requires --echo-jump");
}

TEST_F(BadScene, AMicrophoneThatTheDeviceDoesNotHave) {
    expectRefusal({"--dead-channel", "8"}, kWrongUsage, "--dead-channel is 8, but must be between 0 and 7");
}

TEST_F(BadScene, AFarEndWithoutEcho) {
    expectRefusal({"--far-end-out", path("far.wav")}, kWrongUsage, "--far-end-out requires --echo");
    expectRefusal({"--echo-path-change", "0.5"}, kWrongUsage, "--echo-path-change requires --echo");
}

TEST_F(BadScene, AChangeOfPathAfterTheEnd) {
    expectRefusal({"--echo", "-30", "--echo-path-change", "2"}, kWrongUsage,
                  "--echo-path-change is 2, but must be between 0 and 1");
}

TEST_F(BadScene, OneNameForTwoOutputs) {
    expectRefusal({"--echo", "-30", "--far-end-out", path("./out.wav")}, kWrongUsage,
                  "would be written twice");
}

TEST_F(BadScene, AnOutputThatIsTheInput) {
    writeSound(path("out.wav"), patternedSound(320));
    expectRefusal({"--speech", path("out.wav")}, kWrongUsage,
                  "output '" + path("out.wav") + "' is one of the inputs");
}

TEST_F(BadScene, ASpeechFileThatIsMissing) {
    expectRefusal({"--speech", path("missing.wav")}, kFailure, "cannot read '" + path("missing.wav") + "'");
}

TEST_F(BadScene, SpeechOfASecondTalkerThatIsNotThere) {
    expectRefusal({"--second-speech", path("speech.wav")}, kWrongUsage,
                  "--second-speech requires --second-azimuth");
}

TEST_F(BadScene, AnUnwritablePart) {
    expectRefusal({"--parts", path("missing/part")}, kFailure, "missing/part-talker.wav");
}

}  // namespace
}  // namespace se_host_test
