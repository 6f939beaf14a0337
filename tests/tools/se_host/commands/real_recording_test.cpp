// What `se_host process` tells about a recording whose parts are not known.
#include <cmath>
#include <nlohmann/json.hpp>
#include <numeric>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

using nlohmann::json;

class RealRecording : public HostTest {
  protected:
    void record(const std::vector<std::string>& options) {
        std::vector<std::string> arguments{"scene", path("in.wav"), "--parts", path("in"), "--quiet"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        expectDone(run(arguments));
    }

    // In a room: the far end from the beginning on, a talker from 6 s to 9 s.
    void recordCall(const std::vector<std::string>& more = {}, const std::string& echo_dbfs = "-26",
                    const std::string& talker_end_s = "9") {
        std::vector<std::string> options{"--seconds",       "14",         "--talker-start", "6",
                                         "--talker-end",    talker_end_s, "--echo",         echo_dbfs,
                                         "--reverberation", "0.2"};
        options.insert(options.end(), more.begin(), more.end());
        record(options);
    }

    // The samples of a channel are changed by `change(samples)`.
    template <class Change>
    void rewire(int channel, Change change) {
        Sound sound = readSound(path("in.wav"));
        std::vector<int16_t> samples = channelOf(sound, channel);
        change(samples);
        for (size_t frame = 0; frame < sound.frames(); ++frame) {
            sound.samples[frame * 8 + static_cast<size_t>(channel)] = samples[frame];
        }
        writeSound(path("in.wav"), sound);
    }

    json reportOf(const std::vector<std::string>& more = {"--far-end-channel", "0"}) {
        std::vector<std::string> options{"--json"};
        options.insert(options.end(), more.begin(), more.end());
        const HostRun result = process(options);
        expectDone(result);
        return json::parse(result.out);
    }

    void expectFinding(const json& report, const std::string& finding) {
        const json& findings = report["findings"];
        ASSERT_EQ(findings.size(), 1u) << findings;
        EXPECT_EQ(findings[0].get<std::string>().rfind(finding, 0), 0u) << findings;
    }
};

TEST_F(RealRecording, HasTheEchoReductionThatItsPartsShow) {
    recordCall({"--echo-delay", "123"});
    const json report = reportOf({"--far-end-channel", "0", "--parts", path("in")});
    const json& alone = report["echo"]["alone"];
    EXPECT_GT(alone["seconds"], 3.0);
    EXPECT_NEAR(alone["return_loss_enhancement_db"], report["effect"]["echo_return_loss_enhancement_db"], 4);
    EXPECT_EQ(report["findings"], json::array());
}

TEST_F(RealRecording, LeavesASoftTalkerOutOfTheEcho) {
    recordCall({"--level", "-42"}, "-26", "10");
    const json report = reportOf({"--far-end-channel", "0", "--parts", path("in")});
    const double parts = report["effect"]["echo_return_loss_enhancement_db"];
    EXPECT_GT(report["echo"]["alone"]["return_loss_enhancement_db"], parts - 15);
}

TEST_F(RealRecording, HasTheReturnLossOfTheLoudspeaker) {
    recordCall({"--far-end-level", "-26"}, "-38");
    EXPECT_NEAR(reportOf()["echo"]["alone"]["return_loss_db"], 12, 1.5);
}

TEST_F(RealRecording, HasTheDelayOfTheEchoFromTheSoundAndFromTheEngine) {
    recordCall({"--echo-delay", "183"});
    const json echo = reportOf()["echo"];
    EXPECT_NEAR(echo["lag_ms"], 184, 1.5);
    EXPECT_NEAR(echo["engine"]["delay_ms"], 184, 10);
    EXPECT_LT(echo["engine"]["delay_since_seconds"], 3);
}

TEST_F(RealRecording, HasTheDriftOfTheClocks) {
    record({"--seconds", "15", "--level", "none", "--echo", "-26", "--echo-drift", "100"});
    EXPECT_NEAR(reportOf()["echo"]["engine"]["drift_ppm"], 100, 15);
}

TEST_F(RealRecording, WithoutAFarEndHasNoEcho) {
    record({"--seconds", "3"});
    const json report = reportOf({});
    EXPECT_TRUE(report["echo"].is_null());
    EXPECT_EQ(report["findings"], json::array());
}

TEST_F(RealRecording, WithoutAnEchoSaysSo) {
    recordCall();
    const Sound far_end = readSound(path("in.wav"));
    record({"--seconds", "14"});
    const std::vector<int16_t> played = channelOf(far_end, 0);
    rewire(0, [&](std::vector<int16_t>& samples) { samples = played; });
    const json report = reportOf();
    EXPECT_TRUE(report["echo"]["lag_ms"].is_null()) << report["echo"];
    EXPECT_TRUE(report["echo"]["alone"].is_null());
    EXPECT_NE(process({"--far-end-channel", "0"}).out.find("  path      no echo of the far end is heard\n"),
              std::string::npos);
}

TEST_F(RealRecording, WithAFarEndAfterTheMicrophonesIsNamed) {
    recordCall();
    rewire(0, [](std::vector<int16_t>& samples) {
        samples.insert(samples.begin(), 800, int16_t{0});
        samples.resize(samples.size() - 800);
    });
    const json report = reportOf();
    EXPECT_NEAR(report["echo"]["lag_ms"], -49, 1.5);
    expectFinding(report, "the far end is late: it comes 49 ms after its echo in the microphones");
}

TEST_F(RealRecording, WithALateEchoIsNamed) {
    recordCall({"--echo-delay", "700"});
    expectFinding(reportOf(), "the echo is late: it follows the far end by 701 ms");
}

TEST_F(RealRecording, WithALateEchoThatTheEngineFollowsHasNoFinding) {
    recordCall({"--echo-delay", "540"});
    EXPECT_EQ(reportOf()["findings"], json::array());
}

// The recording's first channel is microphone 1 there, its last one the far end.
TEST_F(RealRecording, WithAMicrophoneAsTheFarEndIsNamed) {
    recordCall();
    const Sound sound = readSound(path("in.wav"));
    for (int channel = 0; channel < 8; ++channel) {
        const std::vector<int16_t> next = channelOf(sound, (channel + 1) % 8);
        rewire(channel, [&](std::vector<int16_t>& samples) { samples = next; });
    }
    const json findings = reportOf()["findings"];
    ASSERT_EQ(findings.size(), 2u) << findings;
    EXPECT_EQ(findings[0].get<std::string>().rfind("microphone 7 does not hear what the others hear", 0), 0u);
    EXPECT_EQ(
        findings[1],
        "the far end is heard without any delay, as in no room: its channel seems to hold a microphone; see "
        "--channel-map and --far-end-channel");
}

TEST_F(RealRecording, WithADelayThatTheEngineHasNotFoundSaysSo) {
    recordCall();
    rewire(0, [](std::vector<int16_t>& samples) {
        samples.insert(samples.begin(), 3200, int16_t{0});
        samples.resize(samples.size() - 3200);
    });
    const std::string out = process({"--far-end-channel", "0"}).out;
    EXPECT_NE(out.find("; engine: no delay found\n"), std::string::npos) << out;
}

TEST_F(RealRecording, WithADelayThatJumpedIsNamed) {
    recordCall({"--echo-delay", "50", "--echo-jump", "11", "--echo-jump-by", "40"});
    expectFinding(reportOf(), "the engine has the delay of the echo, ");
}

TEST_F(RealRecording, WithASilentFarEndIsNamed) {
    record({"--seconds", "3"});
    expectFinding(reportOf(), "the far end is silent");
}

TEST_F(RealRecording, WithADeadMicrophoneIsNamed) {
    record({"--seconds", "3"});
    rewire(1, [](std::vector<int16_t>& samples) { samples.assign(samples.size(), 0); });
    const json report = reportOf({});
    expectFinding(report, "microphone 1 is silent: it is dead or not connected");
    EXPECT_EQ(report["microphones"][0]["finding"], report["findings"][0]);
    EXPECT_TRUE(report["microphones"][0]["rms_dbfs"].is_null());
    EXPECT_NE(process().out.find("\n  note      microphone 1 is silent"), std::string::npos);
}

TEST_F(RealRecording, WithADeadCentreHasTheEchoOfTheOthers) {
    recordCall({"--echo-delay", "123"});
    rewire(1, [](std::vector<int16_t>& samples) { samples.assign(samples.size(), 0); });
    const json report = reportOf();
    EXPECT_NEAR(report["echo"]["lag_ms"], 124, 1.5);
    EXPECT_GT(report["echo"]["alone"]["return_loss_enhancement_db"], 20);
    EXPECT_EQ(report["findings"][0], "microphone 1 is silent: it is dead or not connected");
}

TEST_F(RealRecording, WithAMicrophoneThatHearsItsOwnNoiseAloneIsNamed) {
    record({"--seconds", "3"});
    const Sound noise = patternedSound(48000, 1);
    rewire(6, [&](std::vector<int16_t>& samples) {
        for (size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<int16_t>(noise.samples[i] / 30);
    });
    expectFinding(reportOf({}), "microphone 6 does not hear what the others hear (correlation ");
}

TEST_F(RealRecording, WithTheFarEndInPlaceOfAMicrophoneIsNamed) {
    recordCall();
    const std::vector<int16_t> far_end = channelOf(readSound(path("in.wav")), 0);
    rewire(4, [&](std::vector<int16_t>& samples) { samples = far_end; });
    expectFinding(reportOf(), "microphone 4 does not hear what the others hear");
}

TEST_F(RealRecording, WithAnInvertedMicrophoneIsNamed) {
    record({"--seconds", "3", "--reverberation", "0.4"});
    rewire(5, [](std::vector<int16_t>& samples) {
        for (int16_t& sample : samples) sample = static_cast<int16_t>(-sample);
    });
    expectFinding(reportOf({}), "microphone 5 is inverted");
}

TEST_F(RealRecording, WithASoftMicrophoneIsNamed) {
    record({"--seconds", "3"});
    rewire(7, [](std::vector<int16_t>& samples) {
        for (int16_t& sample : samples) sample = static_cast<int16_t>(std::lround(sample * 0.2));
    });
    expectFinding(reportOf({}), "microphone 7 is 15 dB softer than the others: check its gain");
}

TEST_F(RealRecording, WithOneMicrophoneTwiceIsNamed) {
    record({"--seconds", "3"});
    const std::vector<int16_t> second = channelOf(readSound(path("in.wav")), 2);
    rewire(3, [&](std::vector<int16_t>& samples) { samples = second; });
    expectFinding(reportOf({}), "microphone 3 is the same signal as microphone 2");
}

TEST_F(RealRecording, WithOneSignalInAllMicrophonesIsNamedOnce) {
    record({"--seconds", "3"});
    const std::vector<int16_t> centre = channelOf(readSound(path("in.wav")), 1);
    for (int channel = 2; channel < 8; ++channel) {
        rewire(channel, [&](std::vector<int16_t>& samples) { samples = centre; });
    }
    expectFinding(reportOf({}), "all microphones have the same signal");
}

TEST_F(RealRecording, WithExchangedMicrophonesIsNamed) {
    record({"--seconds", "4", "--azimuth", "20", "--reverberation", "0.3"});
    expectFinding(reportOf({"--channel-map", "1,2,6,4,5,3,7"}),
                  "the microphones 3 and 6 seem to have changed places");
}

// That of the engine's rows, and all channels late by one.
TEST_F(RealRecording, InAnotherOrderHasTheMapThatPutsItRight) {
    record({"--seconds", "4", "--azimuth", "20", "--reverberation", "0.3"});
    const std::string map =
        "the microphones are in another order, which --channel-map 1,2,3,4,5,6,7 puts right";
    for (const char* order : {"1,3,2,5,6,7,4", "1,3,2,7,4,5,6", "7,1,2,3,4,5,6"}) {
        const json findings = reportOf({"--channel-map", order})["findings"];
        ASSERT_EQ(findings.size(), 1u) << order << findings;
        EXPECT_NE(findings[0].get<std::string>().find(map), std::string::npos) << order << findings;
    }
    const json with_far_end = reportOf({"--channel-map", "1,3,2,5,6,7,4,0"})["findings"];
    EXPECT_NE(with_far_end[0].get<std::string>().find("--channel-map 1,2,3,4,5,6,7,0 puts right"),
              std::string::npos)
        << with_far_end;
}

TEST_F(RealRecording, WithAnExchangeThatTheSoundDoesNotShowHasNoFinding) {
    record({"--seconds", "4", "--azimuth", "0"});  // 2 and 4 stand alike
    EXPECT_EQ(reportOf({"--channel-map", "1,4,3,2,5,6,7"})["findings"], json::array());
}

TEST_F(RealRecording, OfTheDeviceModelHasNoFinding) {
    record({"--seconds", "4", "--azimuth", "200", "--device-model", "--reverberation", "0.4"});
    EXPECT_EQ(reportOf({"--device-model"})["findings"], json::array());
}

TEST_F(RealRecording, OfAnotherWiringHasTheChannelBesideTheMicrophone) {
    record({"--seconds", "3"});
    rewire(6, [](std::vector<int16_t>& samples) { samples.assign(samples.size(), 0); });
    expectFinding(reportOf({"--channel-map", "6,2,3,4,5,1,7"}), "microphone 1 (channel 6) is silent");
}

TEST_F(RealRecording, OfSensorNoiseAloneHasNoFinding) {
    record({"--seconds", "3", "--level", "none"});
    EXPECT_EQ(reportOf({})["findings"], json::array());
}

TEST_F(RealRecording, HasTheShareOfEachDirection) {
    record({"--seconds", "6", "--azimuth", "330"});
    const Sound second = readSound(path("in.wav"));
    record({"--seconds", "6", "--azimuth", "150"});
    Sound both = readSound(path("in.wav"));
    both.samples.insert(both.samples.end(), second.samples.begin(), second.samples.end());
    writeSound(path("in.wav"), both);

    const json shares = reportOf({})["azimuth_shares"];
    double sum = 0, first = 0, other = 0;
    for (const json& share : shares) {
        sum += share["share"].get<double>();
        if (share["azimuth_degrees"] == 150) first = share["share"];
        if (share["azimuth_degrees"] == 330) other = share["share"];
    }
    EXPECT_NEAR(sum, 1, 1e-9);
    EXPECT_NEAR(first, 0.5, 0.1);
    EXPECT_NEAR(other, 0.5, 0.2);
    const std::string text = process().out;
    const size_t line = text.find("\n  looks at  ");
    EXPECT_LT(line, text.find("150 degrees ", line)) << text;
    EXPECT_LT(line, text.find("330 degrees ", line)) << text;
}

TEST_F(RealRecording, HasTheTimesOfItsBlocks) {
    record({"--seconds", "2"});
    const json report = reportOf({});
    const json& times = report["block_seconds"];
    EXPECT_GT(times["mean"], 0.0);
    EXPECT_LE(times["percentile_99"], times["longest"]);
    EXPECT_GE(times["longest"], times["mean"]);
    EXPECT_NEAR(times["mean"].get<double>() * 200, report["processing_seconds"], 1e-9);
}

}  // namespace
}  // namespace se_host_test
