// With the parts of a simulated recording known.
#include "tests/tools/se_host/measures/known_run.h"

namespace se_host_test {
namespace {

constexpr size_t kLength = 9 * kSecond;

// The talker from second 6 on, the echo in seconds 2 and 3, noise all the time; the output lowers the latter two.
KnownRun call() {
    const Samples talker = joined(Samples(6 * kSecond), noise(3 * kSecond, -20, 1));
    Samples echo = noise(kLength, -30, 2);
    std::fill(echo.begin(), echo.begin() + 2 * kSecond, int16_t{0});
    std::fill(echo.begin() + 4 * kSecond, echo.end(), int16_t{0});
    const Samples background = noise(kLength, -60, 3);
    const Samples rest = sum(scaled(echo, -25), scaled(background, -10));
    KnownRun run(sum(sum(talker, echo), background), sum(scaled(talker, -3), rest));
    run.parts = se_host::SceneParts{talker, background, echo};
    return run;
}

TEST(MeasuredParts, TellWhatHappenedToEach) {
    const KnownRun run = call();
    EXPECT_NEAR(*run.value("echo_return_loss_enhancement_db"), 24.86, 0.05) << "noise is left, too";
    EXPECT_NEAR(*run.value("noise_reduction_db"), 10, 0.1);
    EXPECT_NEAR(*run.value("talker_change_db"), -3, 0.1);
}

TEST(MeasuredParts, AreNothingWhenTheyAreNotKnown) {
    KnownRun run = call();
    run.parts.reset();
    for (const char* name : {"echo_return_loss_enhancement_db", "noise_reduction_db", "talker_change_db",
                             "talker_si_sdr_db", "talker_stoi"}) {
        EXPECT_FALSE(run.value(name)) << name;
    }
}

TEST(MeasuredTalker, OverNoiseOfKnownLevelHasThatRatioAtAnyGainAndLag) {
    const Samples talker = noise(6 * kSecond, -30, 1);
    const Samples other = noise(6 * kSecond, -40, 2);
    KnownRun run(talker, delayed(scaled(sum(talker, other), -6), 320));
    run.parts = se_host::SceneParts{talker, other, Samples(talker.size())};
    EXPECT_NEAR(*run.value("talker_si_sdr_db"), 10, 0.1);
}

TEST(MeasuredTalker, AloneIsAsIntelligibleAsItself) {
    const Samples talker = noise(6 * kSecond, -30, 1);
    KnownRun run(talker, delayed(talker, 320));
    run.parts = se_host::SceneParts{talker, Samples(talker.size()), Samples(talker.size())};
    EXPECT_NEAR(*run.value("talker_stoi"), 1, 0.001);
}

TEST(MeasuredTalker, ThatIsNotInTheOutputHasNoRatio) {
    KnownRun run(noise(6 * kSecond, -30, 1), noise(6 * kSecond, -30, 2));
    run.parts = se_host::SceneParts{noise(6 * kSecond, -30, 1), Samples(6 * kSecond), Samples(6 * kSecond)};
    EXPECT_FALSE(run.value("talker_si_sdr_db"));
    EXPECT_FALSE(run.value("talker_stoi"));
}

TEST(MeasuredPartsOverTime, AreThoseOfTheirSecond) {
    const KnownRun run = call();
    EXPECT_NEAR(run.inSecond("echo_return_loss_enhancement_db", 3), 24.86, 0.05);
    EXPECT_NEAR(run.inSecond("noise_reduction_db", 0), 10, 0.1) << "the first two seconds count";
    EXPECT_NEAR(run.inSecond("talker_change_db", 7), -3, 0.1);
    EXPECT_EQ(run.cell("echo_return_loss_enhancement_db", 0), "");
    EXPECT_EQ(run.cell("noise_reduction_db", 7), "");
    EXPECT_EQ(run.cell("talker_change_db", 3), "");
}

// The margins of 0.1 s around a part are no part.
TEST(MeasuredPartsOverTime, AreNothingInLessThanAQuarterOfASecond) {
    const KnownRun run = call();
    EXPECT_EQ(run.cell("echo_return_loss_enhancement_db", 4), "");
    EXPECT_EQ(run.cell("talker_change_db", 5), "");
}

TEST(MeasuredTalkerOverTime, HasTheRatioOfItsSecond) {
    const Samples talker = noise(6 * kSecond, -30, 1);
    const Samples other = joined(noise(3 * kSecond, -40, 2), noise(3 * kSecond, -50, 3));
    KnownRun run(talker, delayed(scaled(sum(talker, other), -6), 320));
    run.parts = se_host::SceneParts{talker, other, Samples(talker.size())};
    EXPECT_NEAR(run.inSecond("talker_si_sdr_db", 1), 10, 0.2);
    EXPECT_NEAR(run.inSecond("talker_si_sdr_db", 4), 20, 0.2);
    EXPECT_LT(run.inSecond("talker_stoi", 1), run.inSecond("talker_stoi", 4));
}

TEST(MeasuredTalkerOverTime, IsNothingWhereTheTalkerIsSilent) {
    const Samples speech = noise(4 * kSecond, -30, 1);
    // Below 30 dB under its loudest block it is not present.
    const Samples talker = joined(speech, noise(2 * kSecond, -70, 2));
    KnownRun run(talker, talker);
    run.parts = se_host::SceneParts{talker, Samples(talker.size()), Samples(talker.size())};
    EXPECT_NEAR(run.inSecond("talker_stoi", 3), 1, 0.001);
    EXPECT_EQ(run.cell("talker_si_sdr_db", 5), "");
    EXPECT_EQ(run.cell("talker_stoi", 5), "");
}

}  // namespace
}  // namespace se_host_test
