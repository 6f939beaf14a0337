// What is opened, and what is refused with a line that says what to write into the configuration.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>

#include "tests/pipewire/plugin_under_test.h"

namespace se_pipewire_test {
namespace {

bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// -EINVAL, and one line with these parts.
void expectRefused(int result, const Plugin& plugin, const std::vector<std::string>& parts) {
    EXPECT_EQ(result, -EINVAL);
    EXPECT_EQ(std::count(plugin.log().begin(), plugin.log().end(), '\n'), 1) << plugin.log();
    for (const std::string& part : parts)
        EXPECT_TRUE(has(plugin.log(), part)) << part << "\n" << plugin.log();
}

TEST(PipeWireInit, OpensTheEngineAt16KilohertzWithoutArguments) {
    Plugin plugin;
    EXPECT_EQ(plugin.init(), 0);
    EXPECT_EQ(plugin.log(), "");
}

TEST(PipeWireInit, TakesNoDictionaryAtAll) {
    Plugin plugin;
    const spa_audio_info_raw eight = format(8);
    EXPECT_EQ(plugin.methods().init(plugin.object(), nullptr, &eight), 0);
}

// Without audio.rate the module works at 48 kHz.
TEST(PipeWireInit, RefusesAnotherRateAndSaysWhatToWrite) {
    Plugin plugin;
    expectRefused(plugin.init({}, format(8, {}, 48000)), plugin, {"48000", "audio.rate = 16000"});
}

TEST(PipeWireInit, RefusesTooFewChannelsAndSaysWhatToWrite) {
    Plugin plugin;
    expectRefused(plugin.init({}, format(2)), plugin, {"2 channels", "audio.channels = 8", "se.channel-map"});
}

TEST(PipeWireInit, TakesFewerChannelsWithAMapThatFits) {
    Plugin plugin;
    EXPECT_EQ(plugin.init({{"se.channel-map", "[ 0 1 2 3 4 5 6 ]"}}, format(7)), 0);
    EXPECT_EQ(plugin.log(), "");
}

TEST(PipeWireInit, TakesAMapWithCommasAndMissingMicrophones) {
    Plugin plugin;
    EXPECT_EQ(plugin.init({{"se.channel-map", "0,1,-1,-1,-1,-1,-1"}}, format(2)), 0);
}

TEST(PipeWireInit, RefusesAFarEndChannelThatIsNotCaptured) {
    Plugin plugin;
    expectRefused(plugin.init({{"se.channel-map", "[ 0 1 2 3 4 5 6 8 ]"}}), plugin,
                  {"channel 8", "audio.channels = 9"});
}

class PipeWireBadMap : public testing::TestWithParam<const char*> {};

TEST_P(PipeWireBadMap, IsRefused) {
    Plugin plugin;
    expectRefused(plugin.init({{"se.channel-map", GetParam()}}), plugin, {"se.channel-map", GetParam()});
}

INSTANTIATE_TEST_SUITE_P(Each, PipeWireBadMap,
                         testing::Values("", "[ ]", "1", "[ 1 2 3 4 5 6 ]", "[ 1 2 3 4 5 6 7 0 8 ]",
                                         "[ 1 2 3 4 5 6 x ]", "[ 1 2 3 4 5 6 -2 ]", "[ 1 2 3 4 5 6 6 ]",
                                         "[ 1 2 3 4 5 6 7 1 ]", "[ 1 2 3 4 5 6 1.5 ]"));

TEST(PipeWireInit, RefusesAKeyOfOursThatThereIsNot) {
    Plugin plugin;
    expectRefused(plugin.init({{"se.engin", "x"}}), plugin, {"se.engin;", "se.engine, se.folder"});
}

TEST(PipeWireInit, IgnoresForeignKeysWithoutAWord) {
    Plugin plugin;
    EXPECT_EQ(plugin.init({{"channelmix.upmix", "true"}, {"audio.position", nullptr}, {"seed", "1"}}), 0);
    EXPECT_EQ(plugin.log(), "");
}

TEST(PipeWireInit, RefusesADeviceModelThatIsNeitherTrueNorFalse) {
    Plugin plugin;
    expectRefused(plugin.init({{"se.device-model", "maybe"}}), plugin,
                  {"se.device-model = maybe", "true nor false"});
}

TEST(PipeWireInit, OpensTheEngineOfTheDeviceModel) {
    Plugin plugin;
    EXPECT_EQ(plugin.init({{"se.device-model", "true"}}), 0);
    EXPECT_EQ(plugin.log(), "");
}

TEST(PipeWireInit, SaysWhichEngineThereIsNot) {
    Plugin plugin;
    expectRefused(plugin.init({{"se.engine", "se_lib_none"}}), plugin, {"se_lib_none"});
}

TEST(PipeWireInit, SaysWhichFolderHasNoEngine) {
    Plugin plugin;
    expectRefused(plugin.init({{"se.folder", "/nowhere"}}), plugin, {"/nowhere"});
}

TEST(PipeWireInit, SaysWhichTuningThereIsNot) {
    Plugin plugin;
    expectRefused(plugin.init({{"se.tuning", "/nowhere/gentle.json"}}), plugin, {"/nowhere/gentle.json"});
}

TEST(PipeWireInit, RefusesASecondCancellerInTheProcess) {
    Plugin first;
    Plugin second;
    ASSERT_EQ(first.init(), 0);
    EXPECT_EQ(second.init(), -EBUSY);
    EXPECT_NE(second.log(), "");
}

TEST(PipeWireInit, OpensAgainAfterAHandleWasCleared) {
    {
        Plugin first;
        ASSERT_EQ(first.init(), 0);
    }
    Plugin second;
    EXPECT_EQ(second.init(), 0) << second.log();
}

// Version 3. The order is capture, output, playback.
TEST(PipeWireInit, TakesAFormatForEachStream) {
    Plugin plugin;
    EXPECT_EQ(plugin.init2({}, format(8), format(1), format(2)), 0) << plugin.log();
}

TEST(PipeWireInit, TheFirstFormatIsThatOfTheCapture) {
    Plugin plugin;
    expectRefused(plugin.init2({}, format(2), format(8), format(8)), plugin, {"2 channels"});
}

}  // namespace
}  // namespace se_pipewire_test
