// Health: what is counted and measured, and the sentences about it.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

constexpr const char* kReference = "se_lib_beamv1.14";
constexpr size_t kRate = SE_HOST_SAMPLE_RATE;

// Noise from the loudspeaker in all microphones, `delay` frames later; below 0: earlier. Of noise of its own a little.
Sound echoOf(int delay, size_t seconds = 6) {
    Sound sound(seconds * kRate);
    std::mt19937 random(11);
    std::uniform_int_distribution<int> noise(-200, 200);
    const auto frames = static_cast<int>(sound.frames());
    for (int frame = 0; frame < frames; ++frame) {
        const int from = frame - delay;
        const int echo = from >= 0 && from < frames ? sound.far_end[static_cast<size_t>(from)] / 4 : 0;
        for (size_t channel = 0; channel < 8; ++channel) {
            sound.captured[static_cast<size_t>(frame) * 8 + channel] =
                static_cast<int16_t>(echo + noise(random));
        }
    }
    return sound;
}

void silenceMicrophone(Sound& sound, size_t channel, int16_t value) {
    for (size_t frame = 0; frame < sound.frames(); ++frame) sound.captured[frame * 8 + channel] = value;
}

TEST(Health, BeforeTheFirstBlockNothingIsKnown) {
    const Opened host(kReference);
    const se_host_health_t health = host.health();
    EXPECT_EQ(health.valid, 0U);
    EXPECT_EQ(health.frames, 0U);
    EXPECT_EQ(
        host.advice(),
        "no sound has come; start the capture device, and call the process function for each of its buffers");
}

TEST(Health, CountsFramesAndBlocks) {
    const Opened host(kReference);
    process(host, Sound(1000), 100);
    EXPECT_EQ(host.health().frames, 1000U);
    EXPECT_EQ(host.health().blocks, 6U);
}

TEST(Health, HealthySoundNeedsNoAdvice) {
    const Opened host(kReference);
    process(host, echoOf(800), 160);
    EXPECT_EQ(host.advice(), "");
    EXPECT_EQ(host.health().valid & SE_HOST_HAS_BLOCK_TIMES, SE_HOST_HAS_BLOCK_TIMES);
    const se_host_health_t health = host.health();
    EXPECT_GT(health.block_mean_us, 0);
    EXPECT_LE(health.block_mean_us, health.block_worst_us);
    EXPECT_LE(health.block_999_us, health.block_worst_us);
}

TEST(Health, FindsTheDelayOfTheEcho) {
    for (const int delay : {100, 2000, 6000}) {
        const Opened host(kReference);
        process(host, echoOf(delay), 160);
        const se_host_health_t health = host.health();
        ASSERT_EQ(health.valid & SE_HOST_HAS_ECHO_DELAY, SE_HOST_HAS_ECHO_DELAY) << delay;
        EXPECT_NEAR(health.echo_delay_ms, delay / 16.0, 0.1);
        EXPECT_GT(health.echo_delay_confidence, 0.9);
    }
}

TEST(Health, SaysThatTheFarEndComesTooLate) {
    const Opened host(kReference);
    process(host, echoOf(-1600), 160);
    EXPECT_NEAR(host.health().echo_delay_ms, -100, 0.1);
    EXPECT_EQ(host.advice(),
              "the far end comes 100 ms after its echo, which cannot be cancelled so; delay the microphones, "
              "or take the far end earlier");
}

TEST(Health, WithoutAnEchoThereIsNoDelay) {
    const Opened host(kReference);
    Sound sound = echoOf(800);
    std::mt19937 random(5);
    std::uniform_int_distribution<int> noise(-3000, 3000);
    for (int16_t& sample : sound.far_end) sample = static_cast<int16_t>(noise(random));
    process(host, sound, 160);
    EXPECT_EQ(host.health().valid & SE_HOST_HAS_ECHO_DELAY, 0U);
}

TEST(Health, FindsADeadMicrophone) {
    Sound constant = echoOf(800, 3);
    silenceMicrophone(constant, 4, 12);
    const Opened host(kReference);
    process(host, constant, 160);
    const se_host_health_t health = host.health();
    for (int microphone = 0; microphone < SE_HOST_MICROPHONES; ++microphone) {
        EXPECT_EQ(health.microphone_dead[microphone], microphone == 3 ? 1 : 0);
    }
    EXPECT_EQ(host.advice(),
              "microphone 4 hears nothing of what the others hear; check it, and the channel map");
}

TEST(Health, SaysOnceThatAllMicrophonesAreDead) {
    const Opened host(kReference);
    host.run(100);
    EXPECT_EQ(host.advice(),
              "no microphone hears anything; switch the capture device on, and check the channel map");
}

TEST(Health, AMicrophoneThatIsNotWiredIsNotAdvisedOn) {
    const Opened host(kReference, [](se_host_options_t& options) { options.microphones[3] = -1; });
    process(host, echoOf(800, 3), 160);
    EXPECT_EQ(host.advice(), "");
}

TEST(Health, CountsClippedSamples) {
    Sound sound = echoOf(800, 3);
    sound.captured[8 * 1000 + 2] = INT16_MAX;
    sound.captured[8 * 1001 + 2] = INT16_MIN;
    const Opened host(kReference);
    process(host, sound, 160);
    EXPECT_EQ(host.health().microphone_clipped[1], 2U);
    EXPECT_EQ(host.health().microphone_clipped[0], 0U);
    EXPECT_EQ(host.advice(), "microphone 2 clips (2 samples); lower its gain");
}

TEST(Health, MeasuresLevels) {
    Sound sound(2 * kRate);
    for (size_t frame = 0; frame < sound.frames(); ++frame) {
        const double wave = std::sin(2 * M_PI * 1000 * static_cast<double>(frame) / kRate);
        for (size_t channel = 0; channel < 8; ++channel)
            sound.captured[frame * 8 + channel] = static_cast<int16_t>(std::lround(3276.8 * wave));
        sound.far_end[frame] = static_cast<int16_t>(std::lround(32760 * wave));
    }
    const Opened host(kReference);
    process(host, sound, 160);
    const se_host_health_t health = host.health();
    EXPECT_NEAR(health.far_end_dbfs, -3.01, 0.05);
    EXPECT_NEAR(health.microphone_dbfs[6], -23.01, 0.05);
}

TEST(Health, SaysThatTheFarEndIsSilent) {
    Sound sound(11 * kRate);
    std::fill(sound.far_end.begin(), sound.far_end.end(), int16_t{0});
    const Opened host(kReference);
    process(host, sound, 160);
    EXPECT_EQ(host.health().far_end_dbfs, -144);
    EXPECT_NEAR(host.health().far_end_silent_seconds, 11, 0.01);
    EXPECT_EQ(
        host.advice(),
        "the far end has been silent for 11 s; if the loudspeaker plays, hand what it plays to the far end");
}

TEST(Health, FindsMissingFrames) {
    const Opened host(kReference);
    const Sound sound = echoOf(800, 8);
    std::vector<int16_t> mono(160);
    uint64_t time = 5'000'000'000;
    for (size_t block = 0; block < 800; ++block, time += 10'000'000) {
        if (block < 600 && block % 100 == 50) continue;  // lost; a loss is known for sure two seconds later
        se_host_clock(host, time);
        se_host_process_i16(host, sound.captured.data() + block * 160 * 8, 8,
                            sound.far_end.data() + block * 160, 160, mono.data());
    }
    const se_host_health_t health = host.health();
    EXPECT_EQ(health.valid & SE_HOST_HAS_CLOCK, SE_HOST_HAS_CLOCK);
    EXPECT_NEAR(static_cast<double>(health.missing_frames), 6 * 160, 160);
    EXPECT_EQ(host.advice().find(
                  " did not come; raise the buffer of the capture device, or its thread's priority") ==
                  std::string::npos,
              false)
        << host.advice();
}

}  // namespace
}  // namespace se_host_library_test
