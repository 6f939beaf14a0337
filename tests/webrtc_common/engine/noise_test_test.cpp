// The results of the engine's microphone noise test, as a record and as a file.
#include "webrtc_common/se_wrapper/engine/noise_test.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/comma_locale.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::CommaLocale;
using quill::test::ScopedLogCapture;
using quill::test::TestEngine;

namespace {

constexpr int kValues = 180;
constexpr const char* kWithout = "test_engines/noise_test_0";

class NoiseTest : public testing::Test {
  protected:
    NoiseTest() {
        std::string folder = (std::filesystem::temp_directory_path() / "noise_test.XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
        folder_ = folder;
        path_ = folder + "/results.txt";
    }
    ~NoiseTest() override { std::filesystem::remove_all(folder_); }

    // Row k, microphone m: the single-precision value nearest to k + m / 10.
    void load() {
        openSignalEssenceDynamicLibrary("test_engines/full");
        for (int i = 0; i < kValues; ++i) {
            engine_->set_noise_result(i, static_cast<float>(i / 6 + i % 6 / 10.0));
        }
        engine_->clear_calls();
    }

    std::string saved() {
        saveNoiseTestResults(path_);
        std::ostringstream text;
        text << std::ifstream(path_).rdbuf();
        return text.str();
    }

    std::vector<std::string> savedLines() {
        std::istringstream text(saved());
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }

    const TestEngine engine_;
    std::string folder_;
    std::string path_;
};

std::vector<std::string> expectedLines() {
    std::vector<std::string> lines;
    for (int m = 0; m < 6; ++m) {
        lines.push_back("Microphone " + std::to_string(m));
        for (int k = 0; k < 30; ++k) {
            char line[64];
            std::snprintf(line, sizeof(line), "%d %f", k,
                          static_cast<double>(static_cast<float>(k + m / 10.0)));
            lines.emplace_back(line);
        }
    }
    return lines;
}

bool isUntouched(const NoiseTestResults& results) {
    for (const float value : results.values) {
        if (value != -7.0F) return false;
    }
    return true;
}

NoiseTestResults poisoned() {
    NoiseTestResults results;
    for (float& value : results.values) value = -7.0F;
    return results;
}

TEST_F(NoiseTest, WithoutAnEngineHasNoResults) {
    NoiseTestResults results = poisoned();
    EXPECT_FALSE(getNoiseTestResults(&results));
    EXPECT_TRUE(isUntouched(results));
    saveNoiseTestResults(path_);
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(NoiseTest, OfAnEngineWithoutItHasNoResultsAndMakesNoFile) {
    openSignalEssenceDynamicLibrary(kWithout);
    const ScopedLogCapture capture(5);
    NoiseTestResults results = poisoned();
    EXPECT_FALSE(getNoiseTestResults(&results));
    EXPECT_TRUE(isUntouched(results));
    saveNoiseTestResults(path_);
    EXPECT_FALSE(std::filesystem::exists(path_));
    EXPECT_TRUE(capture.records().empty());
}

TEST_F(NoiseTest, OfAnEngineWithoutItLeavesAnOlderFileAlone) {
    openSignalEssenceDynamicLibrary(kWithout);
    std::ofstream(path_) << "older";
    EXPECT_EQ(saved(), "older");
}

TEST_F(NoiseTest, RecordIsTheEnginesOwnRowAfterRow) {
    load();
    NoiseTestResults results = poisoned();
    EXPECT_TRUE(getNoiseTestResults(&results));
    for (int i = 0; i < kValues; ++i) {
        EXPECT_EQ(results.values[i], static_cast<float>(i / 6 + i % 6 / 10.0)) << i;
    }
}

TEST_F(NoiseTest, RecordIsCopiedByteForByte) {
    load();
    struct {
        float before = 1.0F;
        NoiseTestResults results = poisoned();
        float behind = 2.0F;
    } guarded;
    engine_->set_noise_result(0, -0.0F);
    engine_->set_noise_result(179, std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(getNoiseTestResults(&guarded.results));
    EXPECT_TRUE(std::signbit(guarded.results.values[0]));
    EXPECT_TRUE(std::isnan(guarded.results.values[179]));
    EXPECT_EQ(guarded.before, 1.0F);
    EXPECT_EQ(guarded.behind, 2.0F);
}

TEST_F(NoiseTest, RecordIsFetchedWithoutAskingWhetherATestIsRunning) {
    load();
    engine_->set_noise_test_running(true);
    NoiseTestResults results = poisoned();
    EXPECT_TRUE(getNoiseTestResults(&results));
    EXPECT_EQ(engine_.calls(), std::vector<std::string>{"MMIfGetNoiseTestResults()"});
}

TEST_F(NoiseTest, FileIsWrittenWithoutAskingWhetherATestIsRunning) {
    load();
    engine_->set_noise_test_running(true);
    EXPECT_EQ(savedLines(), expectedLines());
    EXPECT_EQ(engine_.calls(), std::vector<std::string>{"MMIfGetNoiseTestResults()"});
}

TEST_F(NoiseTest, FileHas186LinesAndNothingElse) {
    load();
    const std::string text = saved();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 186);
    EXPECT_EQ(text.rfind("Microphone 0\n0 0.000000\n1 1.000000\n", 0), 0u) << text;
    const std::string end = "\n28 28.500000\n29 29.500000\n";
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST_F(NoiseTest, FileHoldsOneMicrophoneAfterTheOther) {
    load();
    EXPECT_EQ(savedLines(), expectedLines());
}

TEST_F(NoiseTest, FileShowsThatValuesAreWidenedBeforeTheyArePrinted) {
    load();
    const std::vector<std::string> lines = savedLines();
    ASSERT_EQ(lines.size(), 186u);
    EXPECT_EQ(lines[2 * 31], "Microphone 2");
    EXPECT_EQ(lines[2 * 31 + 1], "0 0.200000");
    EXPECT_EQ(lines[2 * 31 + 2], "1 1.200000");
    EXPECT_EQ(lines[2 * 31 + 30], "29 29.200001");
}

TEST_F(NoiseTest, FileOfASecondSavingIsOneCompleteFile) {
    load();
    saveNoiseTestResults(path_);
    EXPECT_EQ(savedLines(), expectedLines());
}

TEST_F(NoiseTest, WithoutARecordHasNoResults) {
    load();
    engine_->set_null_answers(true);
    NoiseTestResults results;
    std::fill(std::begin(results.values), std::end(results.values), -7.0F);
    EXPECT_FALSE(getNoiseTestResults(&results));
    EXPECT_TRUE(isUntouched(results));
}

TEST_F(NoiseTest, WithoutARecordLeavesAnOlderFileAndLogsNothing) {
    load();
    const std::string before = saved();
    engine_->set_null_answers(true);
    const ScopedLogCapture capture(5);
    EXPECT_EQ(saved(), before);
    EXPECT_TRUE(capture.records().empty());
}

TEST_F(NoiseTest, WithoutARecordMakesNoFile) {
    load();
    engine_->set_null_answers(true);
    saveNoiseTestResults(path_);
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(NoiseTest, FileReplacesALongerOne) {
    load();
    std::ofstream(path_) << std::string(100000, 'x');
    EXPECT_EQ(savedLines(), expectedLines());
}

TEST_F(NoiseTest, FileHoldsEveryValueAsPrintfWritesIt) {
    load();
    const float values[] = {-61.25F,
                            -0.0F,
                            1e-7F,
                            0.0000005F,
                            std::numeric_limits<float>::max(),
                            std::numeric_limits<float>::denorm_min(),
                            std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN(),
                            -std::numeric_limits<float>::quiet_NaN()};
    int row = 0;
    for (const float value : values) engine_->set_noise_result(6 * row++, value);
    const std::vector<std::string> lines = savedLines();
    row = 0;
    for (const float value : values) {
        char line[64];
        std::snprintf(line, sizeof(line), "%d %f", row++, static_cast<double>(value));
        EXPECT_EQ(lines[static_cast<size_t>(row)], line);
    }
}

TEST_F(NoiseTest, FileHasADecimalPointInALocaleWithACommaToo) {
    load();
    const CommaLocale locale;
    if (!locale.isSet()) GTEST_SKIP() << "localedef, of the package libc-bin, makes no locale here";
    char text[16];
    std::snprintf(text, sizeof(text), "%.1f", 0.5);
    ASSERT_STREQ(text, "0,5");
    const std::vector<std::string> lines = savedLines();
    EXPECT_EQ(lines[2 * 31 + 30], "29 29.200001");
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(lines, expectedLines());
}

TEST_F(NoiseTest, FileThatCannotBeOpenedIsReportedWithItsPathAndNothingElse) {
    load();
    const ScopedLogCapture capture(5);
    const std::string path = folder_ + "/no such folder/results.txt";
    saveNoiseTestResults(path);
    const std::vector<quill::LogRecord> records = capture.records();
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].level, 2);
    EXPECT_STREQ(records[0].tag, "se_wrapper");
    EXPECT_STREQ(records[0].source, "webrtc_common/se_wrapper");
    EXPECT_EQ(records[0].text, "Can't write noise test results to " + path + ": No such file or directory");
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(NoiseTest, FolderInPlaceOfTheFileIsReportedToo) {
    load();
    const ScopedLogCapture capture;
    saveNoiseTestResults(folder_);
    EXPECT_EQ(capture.texts(2),
              std::vector<std::string>{"Can't write noise test results to " + folder_ + ": Is a directory"});
}

TEST_F(NoiseTest, FileIsClosedAfterEachSaving) {
    load();
    const int first = ::dup(0);
    ::close(first);
    for (int i = 0; i < 3; ++i) saveNoiseTestResults(path_);
    const int second = ::dup(0);
    ::close(second);
    EXPECT_EQ(second, first);
}

TEST_F(NoiseTest, FileThatTakesNothingIsNotReported) {
    load();
    const ScopedLogCapture capture(5);
    saveNoiseTestResults("/dev/full");
    EXPECT_TRUE(capture.records().empty());
}

}  // namespace
