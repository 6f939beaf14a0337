// The help texts describe every command and option.
#include <sstream>

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
    expectMentions({"--help"}, {"process", "scene", "noise-test", "spectrum", "highpass", "intelligibility",
                                "info", "--version", "Examples:", "se_host scene meeting.wav"});
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

TEST_F(Help, OfIntelligibility) {
    expectMentions({"intelligibility", "--help"},
                   {"CLEAN", "HEARD", "--clean-channel N", "--channel N", "--json", "Examples:"});
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

TEST_F(Help, OfSweep) {
    expectMentions({"sweep", "--help"}, {"RECORDINGS", "manifest", "plan", "run", "merge", "report",
                                         "--grid NAME=A,B,C", "--tuning FILE.json", "--jobs N", "Examples:"});
    expectMentions({"sweep", "run", "--help"},
                   {"FOLDER", "--shard N", "--backend NAME", "slurm", "parallel"});
}

// The commands that a help text lists, one a line.
std::vector<std::string> commandsIn(const std::string& help) {
    std::vector<std::string> commands;
    const size_t list = help.find("\nSubcommands:\n");
    if (list == std::string::npos) return commands;
    std::istringstream lines(help.substr(help.find('\n', list + 1) + 1));
    for (std::string line; std::getline(lines, line) && !line.empty();) {
        if (line[2] != ' ') commands.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    return commands;
}

TEST_F(Help, OfEveryCommandFitsATerminalOf100Columns) {
    std::vector<std::vector<std::string>> open{{}};
    for (size_t i = 0; i < open.size(); ++i) {
        const std::vector<std::string> command = open[i];
        std::vector<std::string> arguments = command;
        arguments.emplace_back("--help");
        const HostRun result = run(arguments);
        expectDone(result);
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) EXPECT_LT(line.size(), 100u) << line;
        for (const std::string& name : commandsIn(result.out)) {
            open.push_back(command);
            open.back().push_back(name);
        }
    }
    EXPECT_GT(open.size(), 15u) << "the host itself, its commands and those of diags";
}

TEST_F(Help, TheVersionIsThatOfTheProject) {
    expectMentions({"--version"}, {"se_host " SE_HOST_VERSION "\n"});
}

}  // namespace
}  // namespace se_host_test
