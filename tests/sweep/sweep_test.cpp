// The whole of `se_host sweep`, as a user runs it.
#include "tests/sweep/sweep_test.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tools/se_host/sweep/hash.h"

namespace se_host_test {

void SweepTest::makeRecordings(int count) const {
    std::filesystem::create_directory(path("rec"));
    Sound sound = patternedSound(1600);
    for (int i = 0; i < count; ++i) {
        sound.samples.front() = static_cast<int16_t>(i);
        writeSound(path("rec/") + static_cast<char>('a' + i) + ".wav", sound);
    }
}

HostRun SweepTest::trySweep(const std::string& words) const {
    return shell("se_host sweep " + words);
}

void SweepTest::sweep(const std::string& words) const {
    const HostRun result = trySweep(words);
    EXPECT_EQ(result.exit_code, 0) << words;
    EXPECT_EQ(result.err, "") << words;
}

std::string SweepTest::textOf(const std::string& name) const {
    std::ostringstream text;
    text << std::ifstream(path(name), std::ios::binary).rdbuf();
    return text.str();
}

std::vector<SweepTest::Json> SweepTest::rows(const std::string& name) const {
    std::vector<Json> found;
    std::istringstream lines(textOf(name));
    for (std::string line; std::getline(lines, line);) found.push_back(Json::parse(line));
    return found;
}

std::string SweepTest::results(const std::string& folder) const {
    std::string all;
    for (const char* const name : {"/results.jsonl", "/results.csv", "/results.sqlite"}) {
        const std::string text = textOf(folder + name);
        EXPECT_NE(text, "") << folder << name;
        all += text;
    }
    return all;
}

namespace {

class Sweep : public SweepTest {};

TEST_F(Sweep, OfAFolderGivesARowForEachRecordingAndTuning) {
    makeRecordings(2);
    sweep(std::string("rec --no-report ") + kGrid);
    std::vector<std::string> seen;
    for (const Json& row : rows()) {
        EXPECT_EQ(row["status"], "ok") << row;
        seen.push_back(row["recording"].get<std::string>() + " " + row["tuning"].get<std::string>());
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"a default", "a seout_gain_q10=2048", "a seout_gain_q10=512",
                                              "b default", "b seout_gain_q10=2048", "b seout_gain_q10=512"}));
}

TEST_F(Sweep, InStepsGivesTheSameBytes) {
    makeRecordings(2);
    sweep(std::string("rec --no-report --folder whole ") + kGrid);
    sweep("manifest rec --out list.jsonl");
    sweep(std::string("plan list.jsonl ") + kGrid);
    sweep("run");
    sweep("merge");
    EXPECT_EQ(results("sweep"), results("whole"));
}

TEST_F(Sweep, GivesTheSameBytesForAnyNumberOfWorkersAndShards) {
    makeRecordings(3);
    sweep(std::string("rec --no-report --folder one --jobs 1 ") + kGrid);
    sweep(std::string("rec --no-report --folder many --jobs 5 --shard-seconds 2 ") + kGrid);
    EXPECT_EQ(results("one"), results("many"));
    EXPECT_TRUE(std::filesystem::exists(path("many/shards/00003.jsonl")));
}

TEST_F(Sweep, ByABackendGivesTheSameBytes) {
    makeRecordings(2);
    sweep(std::string("rec --no-report --folder whole ") + kGrid);
    sweep(std::string("plan rec --shard-seconds 2 ") + kGrid);
    sweep("run --backend local");
    sweep("merge");
    EXPECT_EQ(results("sweep"), results("whole"));
}

TEST_F(Sweep, ByAScriptOfTheUserRunsIt) {
    makeRecordings(1);
    sweep("plan rec");
    writeText("mine.sh", "#!/bin/sh\n\"$SE_HOST\" sweep run \"$1\" --shard \"$2\"\n");
    std::filesystem::permissions(path("mine.sh"), std::filesystem::perms::owner_all);
    sweep("run --backend ./mine.sh");
    sweep("merge");
    EXPECT_EQ(rows().size(), 1u);
}

TEST_F(Sweep, ByABackendThatLeavesShardsSaysHowMany) {
    makeRecordings(1);
    sweep("plan rec");
    const HostRun result = trySweep("run --backend /bin/true");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(result.err,
              "se_host: backend '/bin/true' has ended, 1 of 1 shards are not finished; run it again\n");
}

TEST_F(Sweep, EndsWithAReport) {
    makeRecordings(2);
    sweep(std::string("rec ") + kGrid);
    EXPECT_NE(textOf("sweep/report.html").find("seout_gain_q10=512"), std::string::npos);
}

TEST_F(Sweep, WritesTheMeasuresOverTime) {
    makeRecordings(1);
    sweep("rec --no-report --over-time --quiet");
    const std::string key = rows().front()["key"];
    EXPECT_EQ(textOf("sweep/over-time/" + key + ".csv").rfind("s", 0), 0u);
}

// The row tells how to listen to it.
TEST_F(Sweep, HasTheOutputOfProcess) {
    makeRecordings(1);
    sweep(std::string("rec --no-report --no-default ") + "--grid seout_gain_q10=512");
    const HostRun processed =
        shell("se_host process rec/a.wav a.wav --quiet --tuning 'sweep/tunings/seout_gain_q10=512.json'");
    EXPECT_EQ(processed.exit_code, 0) << processed.err;
    EXPECT_EQ(rows().front()["output"], se_host::sweep::hashOfSamples(readSound(path("a.wav")).samples));
}

TEST_F(Sweep, ShowsABarOnATerminal) {
    makeRecordings(2);
    sweep("plan rec");
    const HostRun result = runOnTerminal({"sweep", "run", path("sweep")});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("****"), std::string::npos) << result.err;
}

TEST_F(Sweep, WithoutRecordingsIsRefused) {
    noteFiles();
    expectRefused(trySweep(""), kWrongUsage, "a folder of recordings or a command is missing");
}

TEST_F(Sweep, OfAnotherFoldersFilesIsRefused) {
    makeRecordings(1);
    noteFiles();
    expectRefused(trySweep("rec --no-report --folder rec"), kFailure,
                  "'rec' holds something else than a sweep");
}

}  // namespace
}  // namespace se_host_test
