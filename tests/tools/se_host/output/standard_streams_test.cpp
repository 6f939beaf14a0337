// "-", /dev/stdout and the like: sounds and tunings through pipes, logs that grow, streams that are closed.
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

using Names = std::vector<std::string>;

class StandardStreams : public HostTest {
  protected:
    StandardStreams() { writeSound(path("in.wav"), patternedSound(320)); }

    std::string content(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    static bool contains(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }
};

TEST_F(StandardStreams, ARecordingGoesThroughPipes) {
    expectDone(process({"--quiet"}));
    expectDone(shell("cat in.wav | se_host process - - --quiet | cat > piped.wav"));
    EXPECT_EQ(content("piped.wav"), content("out.wav"));
}

TEST_F(StandardStreams, AnotherReaderTakesTheSound) {
    expectDone(shell("se_host process in.wav - --quiet | se_host highpass - - --quiet > out.wav"));
    EXPECT_EQ(readSound(path("out.wav")).frames(), 320u);
}

TEST_F(StandardStreams, ASummaryGoesToStandardErrorThen) {
    for (const char* output : {"-", "/dev/stdout"}) {
        const HostRun result = run({"process", path("in.wav"), output});
        EXPECT_EQ(result.out.substr(0, 4), "RIFF");
        EXPECT_TRUE(contains(result.err, "\n  engine    ")) << result.err;
    }
}

TEST_F(StandardStreams, AJsonSummaryToo) {
    const HostRun result = run({"process", path("in.wav"), "-", "--json"});
    EXPECT_EQ(nlohmann::json::parse(result.err)["output"], "-");
}

TEST_F(StandardStreams, ATraceCanBeTheOutput) {
    const HostRun result =
        run({"process", path("in.wav"), path("out.wav"), "--trace-diags", "sesys_blocks", "-"});
    EXPECT_EQ(result.out, "seconds,sesys_blocks\n0.01,1\n0.02,2\n");
    EXPECT_TRUE(contains(result.err, "\n  engine    ")) << result.err;
}

TEST_F(StandardStreams, ANoiseTestCanBeTheOutput) {
    const HostRun result = run({"noise-test", "-"});
    EXPECT_EQ(result.out.substr(0, 15), "Microphone 0\n0 ");
    EXPECT_TRUE(contains(result.err, "wrote -\n")) << result.err;
}

TEST_F(StandardStreams, ATuningGoesThroughAPipe) {
    const HostRun result =
        shell("se_host diags set seout_gain_q10=900 --save - 2> set.txt | se_host diags restore -");
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(contains(result.out, "seout_gain_q10: 1024 -> 900\n")) << result.out;
    EXPECT_EQ(content("set.txt"), "seout_gain_q10: 1024 -> 900\n");
}

TEST_F(StandardStreams, ALogIsContinued) {
    writeText("log", "old\n");
    expectDone(shell("se_host process in.wav /dev/stdout --quiet >> log"));
    expectDone(process({"--quiet"}));
    EXPECT_EQ(content("log"), "old\n" + content("out.wav"));
}

TEST_F(StandardStreams, AnOutputToTheNullDeviceIsDropped) {
    expectDone(
        shell("se_host process in.wav /dev/null --quiet --trace-diags '*' /dev/null; test -c /dev/null"));
    EXPECT_EQ(files(), Names{"in.wav"});
}

TEST_F(StandardStreams, AReaderThatEndsIsOneError) {
    const HostRun result =
        shell("{ se_host scene - --quiet --seconds 10; echo $? > status; } | head -c 4 > /dev/null");
    EXPECT_EQ(result.err, "se_host: cannot write '-': Broken pipe; its reader has ended\n");
    EXPECT_EQ(content("status"), "1\n");
}

TEST_F(StandardStreams, AFullStandardOutputIsOneError) {
    const HostRun result = shell("se_host diags list > /dev/full");
    EXPECT_EQ(result.err, "se_host: cannot write to standard output: it is full or closed\n");
    EXPECT_EQ(result.exit_code, kFailure);
}

// Else the first file that is opened would be taken for standard output, and the summary written into it.
TEST_F(StandardStreams, AClosedStandardOutputIsOneErrorAndDoesNoHarm) {
    const HostRun result = shell("se_host process in.wav out.wav >&-");
    EXPECT_EQ(result.err, "se_host: cannot write to standard output: it is full or closed\n");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(readSound(path("out.wav")).frames(), 320u);
}

TEST_F(StandardStreams, AClosedStandardInputIsOneError) {
    const HostRun result = shell("se_host process - out.wav <&-");
    EXPECT_EQ(result.err, "se_host: cannot read '-': Bad file descriptor; give a WAV or FLAC file\n");
    EXPECT_EQ(files(), Names{"in.wav"});
}

TEST_F(StandardStreams, StandardInputIsReadOnce) {
    noteFiles();
    expectRefused(run({"process", "-", path("out.wav"), "--far-end", "-"}), kWrongUsage,
                  "'-' is named twice; standard input can be read once");
    expectRefused(run({"process", "-", path("out.wav"), "--compare-routines"}), kWrongUsage,
                  "--compare-routines reads its inputs twice");
}

TEST_F(StandardStreams, StandardOutputIsWrittenOnce) {
    noteFiles();
    expectRefused(run({"process", path("in.wav"), "-", "--trace-diags", "*", "/dev/stdout"}), kWrongUsage,
                  "'/dev/stdout' would be written twice");
}

TEST_F(StandardStreams, AFileWithTheNameOfStandardOutputIsNoInput) {
    const HostRun result =
        shell("cp in.wav ./-; se_host process ./- ./out.wav --quiet; se_host process - out.wav < -");
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
}

}  // namespace
}  // namespace se_host_test
