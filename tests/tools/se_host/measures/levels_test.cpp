// Levels of sound, of speech in it and of its pauses.
#include "tests/tools/se_host/measures/known_run.h"

namespace se_host_test {
namespace {

TEST(MeasuredLevels, OfASineAreItsLevel) {
    const KnownRun run(sine(2 * kSecond, -20), sine(2 * kSecond, -26));
    EXPECT_NEAR(*run.value("input_rms_dbfs"), -20, 0.01);
    EXPECT_NEAR(*run.value("input_speech_dbfs"), -20, 0.1) << "the envelope rises";
    EXPECT_NEAR(*run.value("output_rms_dbfs"), -26, 0.01);
    EXPECT_NEAR(*run.value("output_speech_dbfs"), -26, 0.1);
}

TEST(MeasuredLevels, OfSpeechLeaveOutItsPauses) {
    const Samples sound = joined(sine(4 * kSecond, -20), Samples(12 * kSecond));
    const KnownRun run(sound, sound);
    EXPECT_NEAR(*run.value("input_rms_dbfs"), -26.02, 0.01);
    EXPECT_NEAR(*run.value("input_speech_dbfs"), -20.3, 0.2) << "0.2 s after the sound count, and its decay";
}

TEST(MeasuredLevels, OfPausesAreThoseOfTheQuietestTenth) {
    const Samples sound = joined(sine(8 * kSecond, -20), sine(2 * kSecond, -50));
    const KnownRun run(sound, scaled(sound, -10));
    EXPECT_NEAR(*run.value("input_pause_dbfs"), -50, 0.1);
    EXPECT_NEAR(*run.value("output_pause_dbfs"), -60, 0.1);
}

TEST(MeasuredLevels, OfSilenceAreNothing) {
    const Samples silence(kSecond);
    const KnownRun run(silence, silence);
    for (const char* name : {"input_rms_dbfs", "input_speech_dbfs", "input_pause_dbfs", "output_rms_dbfs",
                             "output_speech_dbfs", "output_pause_dbfs", "pause_reduction_db"}) {
        EXPECT_FALSE(run.value(name)) << name;
    }
}

TEST(MeasuredPauses, AreLoweredByWhatTheOutputLeaves) {
    const Samples speech = joined(sine(6 * kSecond, -20), Samples(2 * kSecond));
    const Samples background = noise(8 * kSecond, -55);
    const KnownRun run(sum(speech, background), sum(speech, scaled(background, -12)));
    EXPECT_NEAR(*run.value("pause_reduction_db"), 12, 0.1);
}

TEST(MeasuredPauses, MayLagInTheOutput) {
    const Samples speech = joined(sine(6 * kSecond, -20), Samples(2 * kSecond));
    const Samples background = noise(8 * kSecond, -55);
    const KnownRun run(sum(speech, background), delayed(sum(speech, scaled(background, -12)), 1500));
    EXPECT_NEAR(*run.value("pause_reduction_db"), 12, 0.3);
}

TEST(MeasuredPauses, OfARecordingOfTwoSecondsAreNothing) {
    const KnownRun run(noise(2 * kSecond, -40), noise(2 * kSecond, -50));
    EXPECT_FALSE(run.value("pause_reduction_db"));
}

}  // namespace
}  // namespace se_host_test
