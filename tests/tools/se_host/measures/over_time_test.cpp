// The measures of each second.
#include <algorithm>
#include <cstdlib>

#include "tests/tools/se_host/measures/known_run.h"

namespace se_host_test {
namespace {

TEST(MeasuresOverTime, HaveARowForEachSecondAndForWhatIsLeft) {
    const KnownRun run(sine(5 * kSecond / 2, -20), sine(5 * kSecond / 2, -20));
    EXPECT_EQ(run.cell("seconds", 0), "1");
    EXPECT_EQ(run.cell("seconds", 2), "2.5");
    EXPECT_EQ(run.cell("seconds", 3), "no such row");
}

TEST(MeasuresOverTime, AreThoseOfTheirSecond) {
    const Samples sound = joined(sine(kSecond, -20), sine(kSecond, -40));
    KnownRun run(sound, joined(sine(kSecond, -30), Samples(kSecond)));
    run.processed.output[0] = INT16_MAX;
    run.processed.directions.assign(100, {2, 20000});
    run.processed.directions.insert(run.processed.directions.end(), 100, {9, 20000});
    EXPECT_NEAR(std::atof(run.cell("input_rms_dbfs", 0).c_str()), -20, 0.01);
    EXPECT_NEAR(std::atof(run.cell("input_rms_dbfs", 1).c_str()), -40, 0.01);
    EXPECT_EQ(run.cell("output_rms_dbfs", 1), "") << "silence";
    EXPECT_EQ(run.cell("output_clipped_percent", 0), "0.0063");
    EXPECT_EQ(run.cell("output_clipped_percent", 1), "0");
    EXPECT_EQ(run.cell("talker_mean_azimuth_degrees", 0), "60");
    EXPECT_EQ(run.cell("talker_mean_azimuth_degrees", 1), "270");
}

TEST(MeasuresOverTime, ShowAnEngineThatConverges) {
    const Samples far_end = noise(6 * kSecond, -15);
    const Samples heard = delayed(scaled(far_end, -20), 800);
    Samples output = heard;
    const Samples lowered = scaled(heard, -18);
    std::copy(lowered.begin() + 3 * kSecond, lowered.end(), output.begin() + 3 * kSecond);
    KnownRun run(heard, output);
    run.play(far_end);
    EXPECT_NEAR(std::atof(run.cell("echo_alone_return_loss_enhancement_db", 2).c_str()), 0, 0.01);
    EXPECT_NEAR(std::atof(run.cell("echo_alone_return_loss_enhancement_db", 3).c_str()), 18, 0.1);
    EXPECT_EQ(run.cell("echo_lag_ms", 3), "50");
}

TEST(MeasuresOverTime, AreThoseThatTheTableMarks) {
    const KnownRun run(sine(kSecond, -20), sine(kSecond, -20));
    for (const se_host::Measure& measure : se_host::measures()) {
        EXPECT_EQ(run.cell(measure.name, 0) != "no such column", measure.over_time) << measure.name;
    }
}

}  // namespace
}  // namespace se_host_test
