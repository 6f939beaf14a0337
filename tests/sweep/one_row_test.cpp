// Whatever goes wrong with one task costs one row, which says so.
#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/output/descriptor.h"
#include "tests/sweep/sweep_test.h"

namespace se_host_test {
namespace {

constexpr const char* kHostile = "--engine test_engines/hostile";

class OneRow : public SweepTest {
  protected:
    OneRow() { makeRecordings(2); }
    ~OneRow() override { ::unsetenv("SE_HOSTILE"); }

    // Of two tasks in a shard each the first one meets an engine that does this.
    void runFirstWhile(const char* deed, const std::string& plan = "") const {
        sweep(std::string("plan rec --shard-seconds 1 ") + kHostile + " " + plan);
        ::setenv("SE_HOSTILE", deed, 1);
        sweep("run --shard 1");
        ::unsetenv("SE_HOSTILE");
        sweep("run");
        sweep("merge");
    }

    void expectFirstFailed(const std::string& error) const {
        const std::vector<Json> all = rows();
        ASSERT_EQ(all.size(), 2u);
        EXPECT_EQ(all[0]["status"], "failed");
        EXPECT_EQ(all[0]["error"], error);
        EXPECT_TRUE(all[0]["measures"].is_null());
        EXPECT_TRUE(all[0]["output"].is_null());
        EXPECT_EQ(all[1]["status"], "ok");
        EXPECT_TRUE(all[1]["error"].is_null());
    }
};

TEST_F(OneRow, ForACrash) {
    runFirstWhile("init thread-segv");
    expectFirstFailed(
        "the engine ended the process (Segmentation fault) while starting the engine; choose another engine "
        "build");
}

TEST_F(OneRow, ForAnAbort) {
    runFirstWhile("init abort");
    expectFirstFailed(
        "the engine ended the process (Aborted) while starting the engine; choose another engine build");
}

TEST_F(OneRow, ForAnExit) {
    runFirstWhile("block exit");
    expectFirstFailed(
        "the engine ended the process (exit status 0) while processing block 0; choose another engine build");
}

TEST_F(OneRow, ForAnEngineThatHangs) {
    runFirstWhile("block hang-masked", "--time-limit 1");
    expectFirstFailed(
        "no result within 2 s, the process was ended");  // 1 s, and 5 times the recording's length
}

TEST_F(OneRow, ForAnEngineThatTalks) {
    runFirstWhile("block noise");
    EXPECT_EQ(rows()[0]["status"], "ok");
}

// A process that is not ended is ended here, so that none stays.
void expectEnds(pid_t process) {
    const se_output::Descriptor watched(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    if (!watched.isOpen()) {
        EXPECT_EQ(errno, ESRCH);
        return;
    }
    pollfd end{watched.number(), POLLIN, 0};
    constexpr int kLongEnough = 20'000;  // ms
    EXPECT_EQ(::poll(&end, 1, kLongEnough), 1) << "the engine's child " << process << " lives on";
    ::kill(process, SIGKILL);
}

TEST_F(OneRow, EndsWithWhatTheEngineHasStarted) {
    ::setenv("SE_HOSTILE_LOG", path("log").c_str(), 1);
    runFirstWhile("init leave-child");
    ::unsetenv("SE_HOSTILE_LOG");
    EXPECT_EQ(rows()[0]["status"], "ok");
    std::istringstream log(textOf("log"));
    std::string done, child;
    pid_t process = 0;
    ASSERT_TRUE(log >> done >> child >> process) << log.str();
    expectEnds(process);
}

TEST_F(OneRow, ForARecordingThatIsCutShort) {
    std::filesystem::resize_file(path("rec/a.wav"), 1000);
    sweep("rec --no-report");
    expectFirstFailed("cannot read '" + path("rec/a.wav") +
                      "': it is cut short, 24644 bytes are missing; give the whole file");
}

TEST_F(OneRow, ForARecordingThatIsNone) {
    writeText("rec/a.wav", "not a sound");
    sweep("rec --no-report");
    expectFirstFailed("cannot read '" + path("rec/a.wav") +
                      "': not a sound file that can be decoded; give a WAV or FLAC file");
}

TEST_F(OneRow, ForARecordingWithTooFewChannels) {
    writeSound(path("rec/a.wav"), patternedSound(1600, 2));
    sweep("rec --no-report");
    EXPECT_NE(rows()[0]["error"].get<std::string>().find("has 2 channels, but the engine needs 8 or more"),
              std::string::npos);
    EXPECT_EQ(rows()[1]["status"], "ok");
}

TEST_F(OneRow, ForATuningThatTheEngineRefuses) {
    std::filesystem::remove(path("rec/b.wav"));
    sweep("rec --no-report --grid seout_gain_q10=-1");
    const std::vector<Json> all = rows();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0]["status"], "ok");
    EXPECT_EQ(all[1]["error"],
              "tuning 'seout_gain_q10=-1': 'seout_gain_q10' was set to '-1', but the engine holds '0'");
}

TEST_F(OneRow, ForARecordingThatChangedAfterThePlan) {
    sweep("plan rec");
    writeSound(path("rec/a.wav"), patternedSound(3200));
    sweep("run");
    sweep("merge");
    expectFirstFailed(
        "the recording, the tuning, the engine or the program has changed since the plan was made; run "
        "'se_host "
        "sweep plan' again");
}

TEST_F(OneRow, ForARecordingThatIsGone) {
    sweep("plan rec");
    std::filesystem::remove(path("rec/a.wav"));
    sweep("run");
    sweep("merge");
    expectFirstFailed("cannot read '" + path("rec/a.wav") + "': No such file or directory");
}

TEST_F(OneRow, IsTriedAgainWhenTheUserAsks) {
    runFirstWhile("block segv");
    sweep(std::string("rec --no-report --quiet ") + kHostile);
    EXPECT_EQ(rows()[0]["status"], "failed");
    sweep(std::string("rec --no-report --quiet --retry-failed ") + kHostile);
    EXPECT_EQ(rows()[0]["status"], "ok");
}

TEST_F(OneRow, IsCountedForTheUser) {
    writeText("rec/a.wav", "not a sound");
    const HostRun result = trySweep("rec --no-report");
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_NE(result.out.find("1 task has failed; the row says why\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("2 rows, 1 of them failed\n"), std::string::npos) << result.out;
}

}  // namespace
}  // namespace se_host_test
