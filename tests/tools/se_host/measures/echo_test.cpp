// The echo where only the far end speaks, and how long it takes to be cancelled.
#include <algorithm>
#include <cmath>

#include "tests/tools/se_host/measures/known_run.h"

namespace se_host_test {
namespace {

constexpr size_t kSeconds = 10;

// White noise that comes back 50 ms later and 20 dB softer; lowered by so much in the first `seconds` and after them.
KnownRun echoOf(double before_db, size_t seconds, double after_db) {
    const Samples far_end = noise(kSeconds * kSecond, -15);
    const Samples heard = delayed(scaled(far_end, -20), 800);
    Samples output = scaled(heard, -before_db);
    const Samples after = scaled(heard, -after_db);
    std::copy(after.begin() + static_cast<ptrdiff_t>(seconds * kSecond), after.end(),
              output.begin() + static_cast<ptrdiff_t>(seconds * kSecond));
    KnownRun run(heard, output);
    run.play(far_end);
    return run;
}

TEST(MeasuredEcho, HasItsDelayAndItsLevel) {
    const KnownRun run = echoOf(15, 0, 15);
    EXPECT_NEAR(*run.value("echo_lag_ms"), 50, 0.1);
    EXPECT_NEAR(*run.value("echo_alone_return_loss_db"), 20, 0.2);
    EXPECT_NEAR(*run.value("echo_alone_return_loss_enhancement_db"), 15, 0.1);
    EXPECT_GT(*run.value("echo_alone_seconds"), 8);
    EXPECT_LE(*run.value("echo_alone_seconds"), 10);
}

TEST(MeasuredEcho, ThatIsLoweredAtOnceHasConvergedAfterTheFirstHalfSecond) {
    EXPECT_EQ(echoOf(15, 0, 15).value("convergence_seconds"), 0.5);
}

TEST(MeasuredEcho, ThatIsLoweredAfterThreeSecondsConvergesThen) {
    const std::optional<double> seconds = echoOf(0, 3, 15).value("convergence_seconds");
    ASSERT_TRUE(seconds);
    EXPECT_GE(*seconds, 3 - 0.3) << "the time before the first echo does not count";
    EXPECT_LE(*seconds, 3.5);
}

TEST(MeasuredEcho, ThatIsNeverLoweredDoesNotConverge) {
    EXPECT_FALSE(echoOf(0, 0, 0).value("convergence_seconds"));
    EXPECT_NEAR(*echoOf(0, 0, 0).value("echo_alone_return_loss_enhancement_db"), 0, 0.01);
}

TEST(MeasuredEcho, IsNothingWithoutAFarEnd) {
    const Samples sound = noise(4 * kSecond, -30);
    const KnownRun run(sound, sound);
    for (const char* name :
         {"echo_lag_ms", "echo_alone_seconds", "echo_alone_return_loss_db", "convergence_seconds",
          "echo_alone_return_loss_enhancement_db", "echo_engine_delay_ms"}) {
        EXPECT_FALSE(run.value(name)) << name;
    }
}

TEST(MeasuredEcho, ThatNobodyHearsHasNoDelay) {
    KnownRun run(noise(4 * kSecond, -30, 1), noise(4 * kSecond, -30, 1));
    run.play(noise(4 * kSecond, -30, 2));
    EXPECT_FALSE(run.value("echo_lag_ms"));
    EXPECT_FALSE(run.value("echo_alone_seconds"));
}

TEST(MeasuredEcho, HasTheEnginesEstimate) {
    KnownRun run = echoOf(15, 0, 15);
    EXPECT_FALSE(run.value("echo_engine_delay_ms"));
    run.processed.echo.assign(1000, {49, 3.5, 1.25});
    run.processed.echo.front() = {20, 0, 0.01};
    EXPECT_EQ(run.value("echo_engine_delay_ms"), 49);
    EXPECT_EQ(run.value("echo_engine_drift_ppm"), 3.5);
    EXPECT_EQ(run.value("echo_engine_delay_since_seconds"), 1.25);
}

TEST(MeasuredEchoOverTime, IsThatOfItsSecond) {
    const KnownRun run = echoOf(0, 3, 18);
    EXPECT_EQ(run.cell("echo_lag_ms", 3), "50");
    EXPECT_EQ(run.cell("echo_alone_seconds", 4), "1");
    EXPECT_NEAR(run.inSecond("echo_alone_return_loss_db", 4), 20, 0.2);
    EXPECT_NEAR(run.inSecond("echo_alone_return_loss_enhancement_db", 2), 0, 0.01);
    EXPECT_NEAR(run.inSecond("echo_alone_return_loss_enhancement_db", 3), 18, 0.1);
}

// The first half second of echo alone is not converged, as there is no window before it.
TEST(MeasuredEchoOverTime, TellsTheTimeBeforeTheEngineHasConverged) {
    const KnownRun run = echoOf(0, 3, 15);
    EXPECT_EQ(run.cell("convergence_seconds", 1), "1");
    EXPECT_EQ(run.cell("convergence_seconds", 2), "1");
    EXPECT_NEAR(run.inSecond("convergence_seconds", 3), 0.4, 0.1);
    EXPECT_EQ(run.cell("convergence_seconds", 4), "0");
    double all = 0;
    for (size_t second = 0; second < kSeconds; ++second) {
        const double seconds = run.inSecond("convergence_seconds", second);
        if (!std::isnan(seconds)) all += seconds;
    }
    EXPECT_NEAR(all, *run.value("convergence_seconds"), 1e-9);
}

TEST(MeasuredEchoOverTime, TellsThatTheEngineHasLostTheEchoAgain) {
    KnownRun run = echoOf(15, 0, 15);
    const Samples heard = run.analysis().microphone;
    std::copy(heard.begin() + 6 * kSecond, heard.begin() + 7 * kSecond,
              run.processed.output.begin() + 6 * kSecond);
    EXPECT_EQ(run.value("convergence_seconds"), 0.5);
    EXPECT_EQ(run.cell("convergence_seconds", 5), "0");
    EXPECT_GT(run.inSecond("convergence_seconds", 6), 0.5);
    EXPECT_EQ(run.cell("convergence_seconds", 8), "0");
}

TEST(MeasuredEchoOverTime, IsNothingWhereTheFarEndIsSilent) {
    const Samples far_end = joined(noise(6 * kSecond, -15), Samples(4 * kSecond));
    const Samples heard = delayed(scaled(far_end, -20), 800);
    KnownRun run(sum(heard, noise(heard.size(), -60, 2)), scaled(heard, -15));
    run.play(far_end);
    EXPECT_EQ(run.cell("echo_lag_ms", 4), "50");
    EXPECT_EQ(run.cell("echo_alone_seconds", 8), "0");
    for (const char* name : {"echo_lag_ms", "echo_alone_return_loss_db", "convergence_seconds",
                             "echo_alone_return_loss_enhancement_db"}) {
        EXPECT_EQ(run.cell(name, 8), "") << name;
    }
}

TEST(MeasuredEchoOverTime, IsNothingInLessThanAQuarterOfASecond) {
    const size_t end = 99 * kSecond / 20;
    const Samples far_end = joined(noise(end, -15), Samples(kSeconds * kSecond - end));
    const Samples heard = delayed(scaled(far_end, -20), 800);
    KnownRun run(sum(heard, noise(heard.size(), -60, 2)), scaled(heard, -15));
    run.play(far_end);
    EXPECT_GT(run.inSecond("echo_alone_seconds", 5), 0.05);
    EXPECT_LT(run.inSecond("echo_alone_seconds", 5), 0.25);
    EXPECT_EQ(run.cell("echo_alone_return_loss_db", 5), "");
    EXPECT_EQ(run.cell("echo_alone_return_loss_enhancement_db", 5), "");
}

TEST(MeasuredEchoOverTime, HasTheEnginesEstimateAtTheEndOfTheSecond) {
    KnownRun run = echoOf(15, 0, 15);
    run.processed.echo.assign(100, {20, 1, 0.01});
    run.processed.echo.insert(run.processed.echo.end(), 900, {49, 3.5, 1.01});
    EXPECT_EQ(run.cell("echo_engine_delay_ms", 0), "20");
    EXPECT_EQ(run.cell("echo_engine_delay_ms", 1), "49");
    EXPECT_EQ(run.cell("echo_engine_delay_since_seconds", 0), "0.01");
    EXPECT_EQ(run.cell("echo_engine_delay_since_seconds", 9), "1.01");
    EXPECT_EQ(run.cell("echo_engine_drift_ppm", 1), "3.5");
}

}  // namespace
}  // namespace se_host_test
