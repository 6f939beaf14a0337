// The summary of a run, as text and as JSON.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Summary : public HostTest {
  protected:
    Summary() { writeSound(path("in.wav"), patternedSound(401)); }

    nlohmann::json json(std::vector<std::string> more = {}) {
        more.push_back("--json");
        const HostRun result = process(more);
        expectDone(result);
        return nlohmann::json::parse(result.out);
    }
};

TEST_F(Summary, CountsBlocksAndSeconds) {
    const nlohmann::json summary = json();
    EXPECT_EQ(summary["blocks"], 3);
    EXPECT_DOUBLE_EQ(summary["seconds"], 401 / 16000.0);
    EXPECT_EQ(summary["channels"], 8);
    EXPECT_EQ(summary["sample_rate"], 16000);
    EXPECT_EQ(summary["file_sample_rate"], 16000);
}

TEST_F(Summary, TheRealTimeFactorIsProcessingTimeOverDuration) {
    const nlohmann::json summary = json();
    EXPECT_GT(summary["real_time_factor"], 0.0);
    EXPECT_DOUBLE_EQ(summary["real_time_factor"],
                     summary["processing_seconds"].get<double>() / summary["seconds"].get<double>());
}

TEST_F(Summary, NamesFilesAndEngine) {
    const nlohmann::json summary = json();
    EXPECT_EQ(summary["input"], path("in.wav"));
    EXPECT_EQ(summary["output"], path("out.wav"));
    EXPECT_EQ(summary["engine"]["build"], "se_lib_beamv1.14");
    EXPECT_NE(summary["engine"]["version"], "");
    EXPECT_TRUE(summary["engine"]["capabilities"]["beam_forming"].is_boolean());
    EXPECT_TRUE(summary["engine"]["capabilities"]["noise_tests"].is_boolean());
}

TEST_F(Summary, HasADirectionForEveryBlock) {
    const nlohmann::json directions = json()["directions"];
    ASSERT_EQ(directions.size(), 3u);
    for (const nlohmann::json& direction : directions) {
        EXPECT_TRUE(direction["location"].is_number_integer());
        EXPECT_TRUE(direction["confidence"].is_number_integer());
    }
}

TEST_F(Summary, HasNoDirectionWhenTheEngineIsBypassed) {
    const nlohmann::json summary = json({"--bypass"});
    EXPECT_EQ(summary["bypass"], true);
    EXPECT_TRUE(summary["directions"].empty());
    EXPECT_TRUE(summary["talker"].is_null());
}

TEST_F(Summary, LevelsAreRelativeToFullScale) {
    Sound sound{16000, 8, std::vector<int16_t>(8 * 200, 0)};
    for (size_t i = 7; i < sound.samples.size(); i += 8) sound.samples[i] = -16384;
    writeSound(path("in.wav"), sound);
    const nlohmann::json levels = json({"--bypass"})["levels"];
    ASSERT_EQ(levels["input"].size(), 8u);
    EXPECT_NEAR(levels["input"][7]["rms_dbfs"], -6.0206, 1e-4);
    EXPECT_NEAR(levels["output"]["rms_dbfs"], -6.0206, 1e-4);
    EXPECT_NEAR(levels["output"]["peak_dbfs"], -6.0206, 1e-4);
}

TEST_F(Summary, TheLevelInPausesIsThatOfTheQuietestBlocks) {
    Sound sound{16000, 8, std::vector<int16_t>(8 * 160 * 20, 16384)};
    std::fill_n(sound.samples.begin() + 8 * 160 * 5, 8 * 160 * 2, int16_t{4096});
    writeSound(path("in.wav"), sound);
    const nlohmann::json levels = json({"--bypass"})["levels"];
    EXPECT_NEAR(levels["output"]["pause_dbfs"], -18.0618, 1e-4);
    EXPECT_NEAR(levels["output"]["peak_dbfs"], -6.0206, 1e-4);
}

TEST_F(Summary, TheLevelOfSilenceIsNull) {
    writeSound(path("in.wav"), Sound{16000, 8, std::vector<int16_t>(8 * 160, 0)});
    EXPECT_TRUE(json({"--bypass"})["levels"]["output"]["rms_dbfs"].is_null());
}

TEST_F(Summary, FindsNoTalkerInSilence) {
    writeSound(path("in.wav"), Sound{16000, 8, std::vector<int16_t>(8 * 1600, 0)});
    EXPECT_TRUE(json()["talker"].is_null());
    EXPECT_NE(process().out.find("no direction found"), std::string::npos);
}

TEST_F(Summary, NamesTheFarEnd) {
    EXPECT_TRUE(json()["far_end"].is_null());
    EXPECT_EQ(json({"--far-end-channel", "0"})["far_end"], "channel 0");
}

TEST_F(Summary, BytesThatAreNoTextStillGiveJson) {
    writeSound(path("\xff.wav"), patternedSound(160));
    const HostRun result = run({"process", path("\xff.wav"), path("out.wav"), "--json"});
    EXPECT_TRUE(nlohmann::json::accept(result.out));
}

TEST_F(Summary, TheTextNamesWhatRanAndWhatCameOut) {
    const HostRun result = process();
    expectDone(result);
    for (const char* word : {"in.wav -> ", "out.wav", "se_lib_beamv1.14", "8 channels", "3 blocks", "far end",
                             "dBFS", "talker", "real-time factor"}) {
        EXPECT_NE(result.out.find(word), std::string::npos) << word << " in\n" << result.out;
    }
}

TEST_F(Summary, QuietPrintsNothing) {
    const HostRun result = process({"--quiet"});
    expectDone(result);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(readSound(path("out.wav")).frames(), 401u);
}

TEST_F(Summary, QuietStillPrintsJsonThatIsAskedFor) {
    EXPECT_EQ(json({"--quiet"})["blocks"], 3);
}

TEST_F(Summary, WithoutATerminalThereIsNoProgressBar) {
    EXPECT_EQ(process().err, "");
}

}  // namespace
}  // namespace se_host_test
