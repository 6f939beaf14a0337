// Engines that end the process, throw or hang. tests/reliability/hostile has all kinds of them; here are the messages.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

const std::string kHostile = "test_engines/hostile";

class EngineEnd : public HostTest {
  protected:
    EngineEnd() {
        writeSound(path("in.wav"), patternedSound(1600));
        writeText("out.wav", "old");
        noteFiles();
    }
    ~EngineEnd() override { ::unsetenv("SE_HOSTILE"); }

    HostRun processWhile(const char* deed, const std::vector<std::string>& more = {}) const {
        ::setenv("SE_HOSTILE", deed, 1);
        std::vector<std::string> words{"--engine", kHostile};
        words.insert(words.end(), more.begin(), more.end());
        return process(words);
    }

    void expectNamed(const HostRun& result, const std::string& line) const {
        EXPECT_EQ(result.exit_code, kEngineEnded);
        EXPECT_EQ(result.err, "se_host: " + line + "\n");
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav"}));
        std::string old;
        std::ifstream(path("out.wav")) >> old;
        EXPECT_EQ(old, "old");
    }
};

TEST_F(EngineEnd, ByExitIsNoSuccess) {
    expectNamed(
        processWhile("block exit"),
        "the engine ended the process (exit status 0) while processing block 0; choose another engine "
        "build");
    expectNamed(
        processWhile("load _exit"),
        "the engine ended the process (exit status 0) while loading the engine; choose another engine "
        "build");
}

TEST_F(EngineEnd, ByACrashNamesTheSignal) {
    expectNamed(processWhile("init thread-segv"),
                "the engine ended the process (Segmentation fault) while starting the engine; choose another "
                "engine build");
}

TEST_F(EngineEnd, ByAnExceptionShowsItsText) {
    expectNamed(
        processWhile("block throw"),
        "an exception (engine text) left the engine while processing block 0; choose another engine build");
}

TEST_F(EngineEnd, ByTimeout) {
    expectNamed(
        processWhile("block hang-masked", {"--engine-timeout", "1"}),
        "no answer from the engine for 1 s, it was ended while processing block 0; choose another engine "
        "build");
}

TEST_F(EngineEnd, AfterTheWorkLeavesTheOutput) {
    const HostRun result = processWhile("unload exit-3", {"--quiet"});
    EXPECT_EQ(result.exit_code, kEngineEnded);
    EXPECT_EQ(
        result.err,
        "se_host: the engine ended the process (exit status 3) while unloading the engine; the outputs are "
        "complete\n");
    EXPECT_EQ(readSound(path("out.wav")).frames(), 1600u);
}

TEST_F(EngineEnd, InTheSecondRunIsNamedToo) {
    expectNamed(
        processWhile("second exit", {"--compare-routines"}),
        "the second run, with the engine's own routines, was ended by the engine while starting the engine; "
        "leave out --compare-routines");
}

TEST_F(EngineEnd, ByASignalThatIsNoCrashEndsTheHostByIt) {
    const HostRun result = processWhile("block term");
    EXPECT_EQ(result.signal, SIGTERM);
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav"}));
}

// The user asks for the end, so there is no line.
TEST_F(EngineEnd, OfAnEngineThatHangsComesWithASignalToTheHost) {
    for (const auto& [deed, number] :
         {std::pair("block interrupt", SIGINT), {"block interrupt-masked", SIGTERM}}) {
        const HostRun result = processWhile(deed);
        EXPECT_EQ(result.signal, number);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav"}));
    }
}

TEST_F(EngineEnd, WithoutAChildEndsTheHost) {
    EXPECT_EQ(processWhile("block segv", {"--in-process"}).signal, SIGSEGV);
}

TEST_F(EngineEnd, WithoutAChildByExitIsNoSuccessEither) {
    expectNamed(processWhile("block exit", {"--in-process"}),
                "the engine ended the process while processing block 0; choose another engine build");
}

TEST_F(EngineEnd, CheckEngineAnswersInJson) {
    ::setenv("SE_HOSTILE", "load abort", 1);
    const std::string engine =
        std::string(SE_HOST_PATH).substr(0, std::string(SE_HOST_PATH).rfind('/')) + "/selibs/" + kHostile;
    const HostRun result = run({"check-engine", engine, "--json"});
    EXPECT_EQ(result.exit_code, kEngineEnded);
    const nlohmann::json json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["usable"], false);
    EXPECT_EQ(json["objection"], "the engine ended the process (Aborted) while loading the engine");
}

}  // namespace
}  // namespace se_host_test
