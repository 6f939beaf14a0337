// Plans: tunings are checked before anything runs, and rows that are there are not computed again.
#include <filesystem>

#include "tests/sweep/sweep_test.h"

namespace se_host_test {
namespace {

class SweepPlan : public SweepTest {
  protected:
    SweepPlan() { makeRecordings(2); }

    void expectUsageError(const std::string& words, const std::string& mention) const {
        const HostRun result = trySweep("plan rec " + words);
        EXPECT_EQ(result.exit_code, kWrongUsage) << words;
        EXPECT_EQ(result.errorLines(), 1u) << result.err;
        EXPECT_NE(result.err.find(mention), std::string::npos) << result.err;
        EXPECT_FALSE(std::filesystem::exists(path("sweep")));
    }

    // How many of the plan's rows are there already.
    size_t kept() const { return Json::parse(textOf("sweep/plan.json"))["kept"]; }
};

TEST_F(SweepPlan, RefusesAGridThatTheEngineCannotTake) {
    expectUsageError("--grid nothing=1", "--grid: the engine has no diagnostic 'nothing'");
    expectUsageError("--grid seout_gain_q10=much", "--grid: 'much' is not a value for 'seout_gain_q10'");
    expectUsageError("--grid sesys_blocks=1", "--grid: 'sesys_blocks' is read-only");
    expectUsageError("--grid seout_gain_q10", "'seout_gain_q10' is not an axis of a grid");
    expectUsageError("--no-default", "--no-default leaves no tuning");
}

TEST_F(SweepPlan, RefusesATuningOfAnotherEngine) {
    writeText("t.json", R"({"engine":{"build":"b","version":"v"},"diagnostics":{"other":{"value":1}}})");
    const HostRun result = trySweep("plan rec --tuning t.json");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(result.err,
              "se_host: 't.json': the engine has no diagnostic 'other'; 'se_host diags list' shows what can "
              "be set\n");
}

TEST_F(SweepPlan, RefusesTwoTuningsOfOneName) {
    ASSERT_EQ(shell("se_host diags dump t.json && mkdir u && cp t.json u").exit_code, 0);
    expectUsageError("--tuning t.json u/t.json", "two tunings have the name 't'");
}

TEST_F(SweepPlan, WritesPointsAsTuningsThatCanBeApplied) {
    sweep("plan rec --grid seout_gain_q10=512 --grid aec_bypass=1");
    const HostRun result =
        shell("se_host diags restore 'sweep/tunings/seout_gain_q10=512,aec_bypass=1.json'");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out,
              "aec_bypass: false -> true\nseout_gain_q10: 1024 -> 512\n"
              "2 changed, 0 kept for the record, 0 unknown, 0 refused\n");
}

TEST_F(SweepPlan, CopiesTuningFiles) {
    ASSERT_EQ(shell("se_host diags set seout_gain_q10=512 --save mine.json").exit_code, 0);
    sweep("plan rec --tuning mine.json");
    EXPECT_EQ(textOf("sweep/tunings/mine.json"), textOf("mine.json"));
}

TEST_F(SweepPlan, DividesTheTasksIntoShards) {
    sweep(std::string("plan rec --shard-seconds 2 ") + kGrid);
    std::vector<int> shards;
    for (const Json& task : rows("sweep/tasks.jsonl")) shards.push_back(task["shard"]);
    EXPECT_EQ(shards, (std::vector<int>{1, 1, 2, 2, 3, 3}));
}

TEST_F(SweepPlan, WithMoreRecordingsAndTuningsKeepsTheRows) {
    sweep(std::string("rec --no-report ") + kGrid);
    makeRecordings(3);
    sweep("plan rec --grid seout_gain_q10=512,2048,4096");
    EXPECT_EQ(kept(), 6u);
    const HostRun result = trySweep("run");
    EXPECT_EQ(result.out, "shard 1 of 1: 6 rows, 0 failed\n");
    sweep("merge");
    EXPECT_EQ(rows().size(), 12u);

    sweep("rec --no-report --folder new --grid seout_gain_q10=512,2048,4096");
    EXPECT_EQ(results("sweep"), results("new"));
}

TEST_F(SweepPlan, WithFewerTuningsMergesThoseAlone) {
    sweep(std::string("rec --no-report ") + kGrid);
    sweep("rec --no-report --no-default --grid seout_gain_q10=512");
    EXPECT_EQ(rows().size(), 2u);
    EXPECT_EQ(kept(), 2u);
}

TEST_F(SweepPlan, KeepsTheRowsOfAShardThatIsNotFinished) {
    sweep("rec --no-report");
    std::filesystem::rename(path("sweep/shards/00001.jsonl"), path("sweep/shards/00001.jsonl.part"));
    sweep("plan rec");
    EXPECT_EQ(kept(), 2u);
}

TEST_F(SweepPlan, FindsTheRowsOfARecordingThatWasRenamed) {
    sweep("rec --no-report");
    std::filesystem::rename(path("rec/a.wav"), path("rec/z.wav"));
    sweep("rec --no-report");
    EXPECT_EQ(kept(), 2u);
    EXPECT_EQ(rows()[1]["recording"], "z");
    EXPECT_EQ(rows()[1]["status"], "ok");
}

TEST_F(SweepPlan, OfARecordingThatChangedDoesItAgain) {
    sweep("rec --no-report");
    writeSound(path("rec/a.wav"), patternedSound(3200));
    sweep("rec --no-report");
    EXPECT_EQ(kept(), 1u);
}

TEST_F(SweepPlan, IsRefusedWhileItRuns) {
    sweep("plan rec");
    const HostRun result = shell("flock -n sweep/shards/00001.jsonl.part '" SE_HOST_PATH "' sweep plan rec");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_NE(result.err.find("another process works on"), std::string::npos) << result.err;
    EXPECT_TRUE(std::filesystem::exists(path("sweep/plan.json")));
}

TEST_F(SweepPlan, OfAnEngineThatWasReplacedIsNotRun) {
    sweep("plan rec");
    Json plan = Json::parse(textOf("sweep/plan.json"));
    plan["engine"]["hash"] = "of another file";
    writeText("sweep/plan.json", plan.dump());
    const HostRun result = trySweep("run");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_NE(result.err.find("is another one than when the plan was made"), std::string::npos) << result.err;
}

TEST_F(SweepPlan, OfAnotherVersionOfTheProgramIsNotRun) {
    sweep("plan rec");
    Json plan = Json::parse(textOf("sweep/plan.json"));
    plan["program"]["version"] = "0.0.1";
    writeText("sweep/plan.json", plan.dump());
    const HostRun result = trySweep("run");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(result.err, "se_host: 'sweep/plan.json' was made by se_host 0.0.1, this is " SE_HOST_VERSION
                          "; run 'se_host sweep plan' again\n");
}

}  // namespace
}  // namespace se_host_test
