// The help texts teach every command and option.
#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Help : public HostTest {
  protected:
    void expectMentions(const std::vector<std::string>& arguments, const std::vector<std::string>& words) {
        const HostRun result = run(arguments);
        expectDone(result);
        for (const std::string& word : words) {
            EXPECT_NE(result.out.find(word), std::string::npos) << word << " in\n" << result.out;
        }
    }
};

TEST_F(Help, OfTheHost) {
    expectMentions({"--help"}, {"process", "scene", "noise-test", "spectrum", "highpass", "info", "--version",
                                "Examples:", "se_host scene meeting.wav"});
}

TEST_F(Help, OfProcess) {
    expectMentions({"process", "--help"},
                   {"IN", "OUT", "--far-end FAR", "--far-end-channel N", "--bypass", "--engine NAME",
                    "--device-model", "--engine-routines", "--tuning FILE.json",
                    "--trace-diags PATTERN OUT.csv", "--set PATH=VALUE", "--quiet", "--json", "Examples:"});
}

TEST_F(Help, OfScene) {
    expectMentions({"scene", "--help"}, {"OUT", "--azimuth"});
}

TEST_F(Help, OfNoiseTest) {
    expectMentions({"noise-test", "--help"}, {"OUT", "--recording IN", "--plot FILE", "--sensor-noise",
                                              "--engine NAME", "--quiet", "--json", "Examples:"});
}

TEST_F(Help, OfSpectrum) {
    expectMentions({"spectrum", "--help"},
                   {"IN", "--channel N", "--size N", "--plot FILE", "--json", "Examples:"});
}

TEST_F(Help, OfHighpass) {
    expectMentions({"highpass", "--help"},
                   {"IN", "OUT", "--gain G", "--channel N", "--plot FILE", "--quiet", "Examples:"});
}

TEST_F(Help, OfInfo) {
    expectMentions({"info", "--help"}, {"--engine NAME", "--device-model", "--json", "Example:"});
}

TEST_F(Help, OfDiags) {
    expectMentions({"diags", "--help"},
                   {"list", "get", "set", "dump", "restore", "diff", "watch", "Examples:"});
    expectMentions({"diags", "list", "--help"}, {"PATTERN", "--level", "--recording IN", "--far-end FAR",
                                                 "--tuning FILE.json", "--engine NAME", "--json"});
    expectMentions({"diags", "set", "--help"}, {"NAME=VALUE", "--save OUT.json", "--tuning FILE.json"});
}

TEST_F(Help, TheVersionIsThatOfTheProject) {
    expectMentions({"--version"}, {"se_host " SE_HOST_VERSION "\n"});
}

}  // namespace
}  // namespace se_host_test
