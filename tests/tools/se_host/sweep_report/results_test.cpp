// results.jsonl as it is read.
#include "tools/se_host/sweep_report/results.h"

#include "host/output/errors.h"
#include "tests/tools/se_host/sweep_report/known_results.h"

namespace se_host_test {
namespace {

using namespace se_host::report;

std::string row(const std::string& recording, const std::string& tuning, const std::string& measures) {
    return "{\"key\":\"k\",\"recording\":\"" + recording + "\",\"tuning\":\"" + tuning +
           "\",\"labels\":{\"room\":\"large\",\"talkers\":2},\"status\":\"ok\",\"error\":null,\"measures\":" +
           measures +
           ",\"engine\":{\"build\":\"b\",\"version\":\"v\",\"file\":\"f\"},\"program\":\"1\",\"processor\":["
           "\"avx\"]}\n";
}

const std::string kFailed =
    "{\"recording\":\"r2\",\"tuning\":\"default\",\"labels\":{},\"status\":\"failed\",\"error\":\"it "
    "crashed\",\"measures\":{}}\n";

void expectRefused(const std::string& text, const std::string& mention) {
    const ResultsFolder folder(text);
    try {
        readResults(folder.path());
        ADD_FAILURE() << "not refused: " << text;
    } catch (const se_output::Failure& error) {
        EXPECT_NE(std::string(error.what()).find(mention), std::string::npos) << error.what();
        EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
    }
}

TEST(SweepResults, HaveDefaultFirst) {
    const ResultsFolder folder(row("r1", "alpha", "{}") + row("r1", "default", "{\"talker_stoi\":0.5}"));
    const Results results = readResults(folder.path());
    EXPECT_EQ(results.tunings, (std::vector<std::string>{"default", "alpha"}));
    ASSERT_EQ(results.measures.size(), 1u) << "those without a value are left out";
    EXPECT_EQ(results.measures[0].values[0][0], 0.5);
    EXPECT_FALSE(results.measures[0].values[1][0]);
    EXPECT_EQ(results.labels[0].at("room"), "large");
    EXPECT_EQ(results.labels[0].at("talkers"), "2");
}

TEST(SweepResults, HaveTuningsInTheOrderOfTheirNumbers) {
    const ResultsFolder folder(row("r1", "gain=1000", "{}") + row("r1", "gain=90", "{}") +
                               row("r1", "gain=800", "{}"));
    EXPECT_EQ(readResults(folder.path()).tunings,
              (std::vector<std::string>{"gain=90", "gain=800", "gain=1000"}));
}

TEST(SweepResults, HaveNullsAndFailedRows) {
    const ResultsFolder folder(row("r1", "default", "{\"talker_stoi\":null,\"noise_reduction_db\":12.5}") +
                               kFailed);
    const Results results = readResults(folder.path());
    ASSERT_EQ(results.measures.size(), 1u);
    EXPECT_STREQ(results.measures[0].measure.name, "noise_reduction_db");
    ASSERT_EQ(results.failed.size(), 1u);
    EXPECT_EQ(results.failed[0].error, "it crashed");
    EXPECT_EQ(results.recordings.size(), 2u);
}

TEST(SweepResults, ThatAreDamagedAreRefusedWithTheirLine) {
    expectRefused(row("r1", "default", "{}") + "{\"recording\":\"r2\"\n",
                  "results.jsonl:2: not a row of results");
    expectRefused("[1]\n", "results.jsonl:1: not a row of results");
    expectRefused("{\"recording\":\"r2\"}\n", "results.jsonl:1: not a row of results");
    expectRefused("", "has no rows");
    expectRefused(row("r1", "default", "{}") + row("r1", "default", "{}"), "two rows of 'r1' with 'default'");
}

TEST(SweepResults, ThatAreNotThereAreNamed) {
    try {
        readResults("/nonexistent");
        ADD_FAILURE();
    } catch (const se_output::Failure& error) {
        EXPECT_STREQ(error.what(),
                     "cannot read '/nonexistent/results.jsonl'; 'se_host sweep merge' writes it");
    }
}

TEST(SweepResults, AreGroupedByALabel) {
    Results results = resultsOf({"talker_stoi"}, 1, 4);
    results.labels[0]["room"] = results.labels[2]["room"] = "large";
    results.labels[1]["room"] = "small";
    const auto groups = groupsBy(results, "room");
    EXPECT_EQ(groups.size(), 2u);
    EXPECT_EQ(groups.at("large"), (std::vector<size_t>{0, 2}));
    EXPECT_EQ(groups.at("small"), (std::vector<size_t>{1}));
}

TEST(SweepResults, CanBeOfChosenMeasuresInTheirOrder) {
    Results results = resultsOf({"noise_reduction_db", "talker_stoi"}, 1, 2);
    chooseMeasures(results, {"talker_stoi", "noise_reduction_db"});
    EXPECT_STREQ(results.measures[0].measure.name, "talker_stoi");
    EXPECT_THROW(chooseMeasures(results, {"loudness"}), se_output::UsageError);
    EXPECT_THROW(chooseMeasures(results, {"convergence_seconds"}), se_output::Failure);
    EXPECT_THROW(results.tuningOf("nothing"), se_output::UsageError);
}

}  // namespace
}  // namespace se_host_test
