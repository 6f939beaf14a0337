// --channel-map: recordings that are not wired as the device. The probe engine returns the far-end block as its output.
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

// Channel `order[c]` of the sound becomes channel c.
Sound rewired(const Sound& sound, const std::vector<int>& order) {
    Sound result{sound.sample_rate, static_cast<int>(order.size()), {}};
    for (size_t frame = 0; frame < sound.frames(); ++frame) {
        for (const int channel : order) {
            result.samples.push_back(
                sound.samples[frame * static_cast<size_t>(sound.channels) + static_cast<size_t>(channel)]);
        }
    }
    return result;
}

// The microphones 1 to 7 are in the channels 6, 4, 5, 0, 1, 2, 3, the far end is in channel 7.
const std::vector<int> kOrder{4, 5, 6, 7, 2, 3, 1, 0};
constexpr const char* kMicrophones = "6,4,5,0,1,2,3";
constexpr const char* kAll = "6,4,5,0,1,2,3,7";

class ChannelMapOption : public HostTest {
  protected:
    std::vector<int16_t> outputOf(const Sound& recording, const std::vector<std::string>& more) {
        writeSound(path("in.wav"), recording);
        expectDone(process(more));
        return readSound(path("out.wav")).samples;
    }

    HostRun refused(const std::string& map, const std::vector<std::string>& more = {}) {
        writeSound(path("in.wav"), recording_);
        noteFiles();
        std::vector<std::string> options{"--channel-map", map};
        options.insert(options.end(), more.begin(), more.end());
        return process(options);
    }

    const Sound recording_ = patternedSound(1600);
};

TEST_F(ChannelMapOption, GivesTheEngineWhatTheDeviceGives) {
    const Sound other = rewired(recording_, kOrder);
    EXPECT_EQ(outputOf(other, {"--channel-map", kAll}), outputOf(recording_, {"--far-end-channel", "0"}));
    EXPECT_EQ(outputOf(other, {"--channel-map", kMicrophones}), outputOf(recording_, {}));
    EXPECT_NE(outputOf(other, {}), outputOf(recording_, {}));
}

TEST_F(ChannelMapOption, NamesTheFarEnd) {
    EXPECT_EQ(
        outputOf(rewired(recording_, kOrder), {"--channel-map", kAll, "--engine", "test_engines/host_probe"}),
        channelOf(recording_, 0));
    const HostRun result = process({"--channel-map", kAll, "--json"});
    expectDone(result);
    EXPECT_EQ(nlohmann::json::parse(result.out)["far_end"], "channel 7");
}

TEST_F(ChannelMapOption, CountsAFarEndChannelInTheRecording) {
    EXPECT_EQ(outputOf(rewired(recording_, kOrder), {"--channel-map", kMicrophones, "--far-end-channel", "7",
                                                     "--engine", "test_engines/host_probe"}),
              channelOf(recording_, 0));
}

TEST_F(ChannelMapOption, ServesARecordingOfMicrophonesAlone) {
    const Sound microphones = rewired(recording_, {1, 2, 3, 4, 5, 6, 7});
    EXPECT_EQ(outputOf(microphones, {"--channel-map", "0,1,2,3,4,5,6"}), outputOf(recording_, {}));
}

TEST_F(ChannelMapOption, ReachesTheDiagnostics) {
    Sound quiet = recording_;
    for (size_t i = 2; i < quiet.samples.size(); i += 8) quiet.samples[i] = 0;
    writeSound(path("in.wav"), rewired(quiet, kOrder));
    const std::vector<std::string> recorded{"--recording", path("in.wav"), "--channel-map", kMicrophones};
    std::vector<std::string> get{"diags", "get", "semic_peak", "--json"};
    get.insert(get.end(), recorded.begin(), recorded.end());
    const HostRun result = run(get);
    expectDone(result);
    const nlohmann::json peaks = nlohmann::json::parse(result.out)["semic_peak"];
    int silent = 0;
    for (const int peak : peaks) silent += peak == 0 ? 1 : 0;
    EXPECT_EQ(silent, 1) << peaks;
    expectDone(run({"diags", "watch", path("in.wav"), "sesys_blocks", "--channel-map", kMicrophones}));
}

TEST_F(ChannelMapOption, ReachesTheNoiseTest) {
    const Sound recording = patternedSound(160 * 210);
    writeSound(path("in.wav"), recording);
    writeSound(path("other.wav"), rewired(recording, kOrder));
    expectDone(run({"noise-test", path("expected.txt"), "--recording", path("in.wav")}));
    expectDone(run(
        {"noise-test", path("out.txt"), "--recording", path("other.wav"), "--channel-map", kMicrophones}));
    EXPECT_EQ(shell("cmp expected.txt out.txt").exit_code, 0);
}

TEST_F(ChannelMapOption, WithAChannelTwiceIsRefused) {
    expectRefused(refused("1,2,3,4,5,6,6"), kWrongUsage, "--channel-map: channel 6 is named twice");
    expectRefused(refused("1,2,3,4,5,6,7,3"), kWrongUsage, "--channel-map: channel 3 is named twice");
}

TEST_F(ChannelMapOption, ThatIsNoListIsRefused) {
    for (const char* map : {"1,2,3,4,5,6", "1,2,3,4,5,6,7,0,8", "1 2 3 4 5 6 7", "1,2,3,4,5,6,",
                            "-1,2,3,4,5,6,7", "a", "1,2,3,4,5,6,99999999999"}) {
        expectRefused(refused(map), kWrongUsage, "is not a list as 1,2,3,4,5,6,7,0");
    }
}

TEST_F(ChannelMapOption, WithAChannelThatTheRecordingLacksIsRefused) {
    expectRefused(
        refused("1,2,3,4,5,6,8"), kWrongUsage,
        "--channel-map: channel 8 does not exist; '" + path("in.wav") + "' has the channels 0 to 7");
    expectRefused(refused("1,2,3,4,5,6,7,9"), kWrongUsage, "channel 9 does not exist");
}

TEST_F(ChannelMapOption, NamesTheFarEndOnce) {
    expectRefused(refused("1,2,3,4,5,6,7,0", {"--far-end-channel", "0"}), kWrongUsage,
                  "--channel-map names the far end, and so does another option");
}

TEST_F(ChannelMapOption, NeedsARecording) {
    noteFiles();
    expectRefused(run({"diags", "get", "semic_peak", "--channel-map", kMicrophones}), kWrongUsage,
                  "--recording");
    expectRefused(run({"noise-test", path("out.txt"), "--channel-map", kMicrophones}), kWrongUsage,
                  "--recording");
}

}  // namespace
}  // namespace se_host_test
