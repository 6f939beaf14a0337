// The results: one content in three forms.
#include <sqlite3.h>

#include <filesystem>

#include "tests/sweep/sweep_test.h"

namespace se_host_test {
namespace {

class SweepResults : public SweepTest {
  protected:
    SweepResults() { makeRecordings(2); }

    // The cells of an answer, "|" between them, a line for each row.
    std::string ask(const std::string& sql) const {
        sqlite3* database = nullptr;
        EXPECT_EQ(
            sqlite3_open_v2(path("sweep/results.sqlite").c_str(), &database, SQLITE_OPEN_READONLY, nullptr),
            SQLITE_OK);
        std::string answer;
        const auto add = [](void* to, int count, char** cells, char**) {
            std::string& text = *static_cast<std::string*>(to);
            for (int i = 0; i < count; ++i)
                text += (i == 0 ? "" : "|") + std::string(cells[i] ? cells[i] : "null");
            text += "\n";
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), add, &answer, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
        return answer;
    }
};

TEST_F(SweepResults, SayWhatTheRowIsOf) {
    sweep("rec --no-report");
    const Json row = rows().front();
    std::vector<std::string> fields;
    for (const auto& [name, value] : row.items()) fields.push_back(name);
    EXPECT_EQ(fields, (std::vector<std::string>{"key", "recording", "tuning", "labels", "status", "error",
                                                "measures", "output", "engine", "program", "processor"}));
    EXPECT_EQ(row["engine"]["build"], "se_lib_beamv1.14");
    EXPECT_EQ(row["program"]["version"], SE_HOST_VERSION);
    EXPECT_EQ(row["program"]["files"].get<std::string>().size(), 32u);
    EXPECT_EQ(row["key"].get<std::string>().size(), 32u);
    EXPECT_EQ(row["output"].get<std::string>().size(), 32u);
    EXPECT_FALSE(row["measures"].empty());
}

TEST_F(SweepResults, AreInTheDatabase) {
    sweep("rec --no-report --grid seout_gain_q10=512");
    EXPECT_EQ(
        ask("SELECT recording, tuning, status, error FROM results"),
        "a|default|ok|null\na|seout_gain_q10=512|ok|null\nb|default|ok|null\nb|seout_gain_q10=512|ok|null\n");
    EXPECT_EQ(ask("SELECT count(*) FROM measures"), std::to_string(rows().front()["measures"].size()) + "\n");
    EXPECT_EQ(ask("SELECT output FROM results WHERE recording = 'b' AND tuning = 'default'"),
              rows()[2]["output"].get<std::string>() + "\n");
}

TEST_F(SweepResults, HaveTheLabelsOfTheManifest) {
    writeText("list.jsonl", R"({"id":"1","recording":"rec/a.wav","scenario":"car, \"fast\"","snr":3}
{"id":"2","recording":"rec/b.wav"}
)");
    sweep("list.jsonl --no-report");
    EXPECT_EQ(rows()[0]["labels"].dump(), R"({"scenario":"car, \"fast\"","snr":3})");
    EXPECT_EQ(ask("SELECT label_scenario, label_snr FROM results"), "car, \"fast\"|3\nnull|null\n");
    EXPECT_NE(textOf("sweep/results.csv").find("\n1,default,\"car, \"\"fast\"\"\",3,ok,"), std::string::npos)
        << textOf("sweep/results.csv");
}

TEST_F(SweepResults, FollowLabelsThatAreWrittenLater) {
    sweep("rec --no-report");
    writeText("list.jsonl", R"({"id":"1","recording":"rec/a.wav","scenario":"car"})");
    sweep("list.jsonl --no-report");
    EXPECT_EQ(rows().front()["labels"]["scenario"], "car");
    EXPECT_EQ(Json::parse(textOf("sweep/plan.json"))["kept"], 1);
}

TEST_F(SweepResults, AreRefusedWhileRowsAreMissing) {
    sweep("plan rec --shard-seconds 1");
    sweep("run --shard 2");
    const HostRun result = trySweep("merge");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(
        result.err,
        "se_host: 1 of 2 rows are not there yet; run 'se_host sweep run sweep', or merge with --partial\n");
    EXPECT_FALSE(std::filesystem::exists(path("sweep/results.jsonl")));
    sweep("merge --partial");
    ASSERT_EQ(rows().size(), 1u);
    EXPECT_EQ(rows()[0]["recording"], "b");
}

TEST_F(SweepResults, HoldNothingOfTheFolderOrTheTime) {
    sweep("rec --no-report --folder one");
    sweep("rec --no-report --folder two");
    EXPECT_EQ(results("one"), results("two"));
}

TEST_F(SweepResults, OfNoPlanAreRefused) {
    const HostRun result = trySweep("merge");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(result.err, "se_host: 'sweep' holds no plan; 'se_host sweep plan' makes one\n");
}

}  // namespace
}  // namespace se_host_test
