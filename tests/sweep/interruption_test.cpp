// A run that is killed in the middle: the next one goes on, and the results have the bytes of a run that was not killed.
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <thread>

#include "tests/sweep/sweep_test.h"

extern char** environ;

namespace se_host_test {
namespace {

class SweepInterruption : public SweepTest {
  protected:
    SweepInterruption() {
        makeRecordings(6);
        sweep(std::string("plan rec ") + kGrid);
    }

    size_t rowsThere() const { return rows("sweep/shards/00001.jsonl.part").size(); }

    // Starts the run, kills it once a row is there, and waits until all of it has ended.
    void killInTheMiddle(int signal) const {
        const std::string script =
            "cd '" + path("") + "' && exec '" SE_HOST_PATH "' sweep run --jobs 2 --quiet";
        char* const words[] = {const_cast<char*>("sh"), const_cast<char*>("-c"),
                               const_cast<char*>(script.c_str()), nullptr};
        pid_t child = 0;
        ASSERT_EQ(::posix_spawn(&child, "/bin/sh", nullptr, nullptr, words, environ), 0);
        while (rowsThere() < 2) std::this_thread::yield();
        ::kill(child, signal);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
    }

    void expectTheBytesOfAWholeRun() const {
        sweep("run");
        sweep("merge");
        sweep(std::string("rec --no-report --folder whole ") + kGrid);
        EXPECT_EQ(results("sweep"), results("whole"));
    }
};

TEST_F(SweepInterruption, ByKillGoesOnWithTheSameBytes) {
    killInTheMiddle(SIGKILL);
    const size_t there = rowsThere();
    EXPECT_GE(there, 2u);
    EXPECT_LT(there, 18u);
    expectTheBytesOfAWholeRun();
}

TEST_F(SweepInterruption, ByTheUserGoesOnWithTheSameBytes) {
    killInTheMiddle(SIGINT);
    expectTheBytesOfAWholeRun();
}

TEST_F(SweepInterruption, InTheMiddleOfARowDoesThatAgain) {
    sweep("run");
    const std::string all = textOf("sweep/shards/00001.jsonl");
    std::filesystem::remove(path("sweep/shards/00001.jsonl"));
    writeText("sweep/shards/00001.jsonl.part", all.substr(0, all.size() - 20));
    const HostRun again = trySweep("run");
    EXPECT_EQ(again.out, "shard 1 of 1: 18 rows, 0 failed\n");
    expectTheBytesOfAWholeRun();
}

TEST_F(SweepInterruption, DoesNothingTwice) {
    sweep("run");
    const std::string all = textOf("sweep/shards/00001.jsonl");
    EXPECT_EQ(trySweep("run").out, "");
    EXPECT_EQ(textOf("sweep/shards/00001.jsonl"), all);
}

// Two of them at once: the second one waits for nothing, and says that the first is at work or does other shards.
TEST_F(SweepInterruption, ByASecondRunDoesNoHarm) {
    sweep(std::string("plan rec --shard-seconds 2 ") + kGrid);
    const HostRun result =
        shell("'" SE_HOST_PATH "' sweep run --quiet & '" SE_HOST_PATH "' sweep run --quiet; wait");
    EXPECT_EQ(result.out, "");
    expectTheBytesOfAWholeRun();
}

// The test's time limit ends it when the engine stays.
TEST_F(SweepInterruption, LeavesNoEngineBehind) {
    ::setenv("SE_HOSTILE", "block hang-masked", 1);
    sweep("plan rec --engine test_engines/hostile");
    // The run has a child a task, which has a child with the engine.
    const HostRun result = shell(
        "childOf() { cut -d' ' -f1 /proc/$1/task/$1/children; }\n"
        "'" SE_HOST_PATH
        "' sweep run --quiet --jobs 1 & run=$!\n"
        "engine=\n"
        "while [ -z \"$engine\" ]; do task=$(childOf $run); [ -z \"$task\" ] || engine=$(childOf $task); "
        "done\n"
        "kill -KILL $run\n"
        "while kill -0 $engine && ! grep -q ') Z' /proc/$engine/stat; do sleep 0.1; done 2>/dev/null\n"
        "echo ended\n");
    ::unsetenv("SE_HOSTILE");
    EXPECT_EQ(result.out, "ended\n") << result.err;
}

}  // namespace
}  // namespace se_host_test
