// The measures of each second.
#include <algorithm>

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
    EXPECT_NEAR(run.inSecond("input_rms_dbfs", 0), -20, 0.01);
    EXPECT_NEAR(run.inSecond("input_rms_dbfs", 1), -40, 0.01);
    EXPECT_EQ(run.cell("output_rms_dbfs", 1), "") << "silence";
    EXPECT_EQ(run.cell("output_clipped_percent", 0), "0.0063");
    EXPECT_EQ(run.cell("output_clipped_percent", 1), "0");
    EXPECT_EQ(run.cell("talker_mean_azimuth_degrees", 0), "60");
    EXPECT_EQ(run.cell("talker_mean_azimuth_degrees", 1), "270");
}

TEST(MeasuresOverTime, HaveAColumnAndAValueForEveryMeasure) {
    const Samples talker = joined(Samples(4 * kSecond), noise(3 * kSecond, -20, 1));
    const Samples far_end = joined(noise(3 * kSecond, -10, 2), Samples(4 * kSecond));
    const Samples echo = delayed(scaled(far_end, -20), 800);
    const Samples background = noise(7 * kSecond, -60, 3);
    KnownRun run(sum(sum(talker, echo), background),
                 sum(talker, sum(scaled(echo, -30), scaled(background, -10))));
    run.play(far_end);
    run.parts = se_host::SceneParts{talker, background, echo};
    run.processed.directions.assign(700, {2, 20000});
    run.processed.echo.assign(700, {50, 0, 0.4});
    const auto columns = run.overTime();
    EXPECT_EQ(columns.size(), 1 + se_host::measures().size());
    for (const se_host::Measure& measure : se_host::measures()) {
        const auto column = columns.find(measure.name);
        ASSERT_NE(column, columns.end()) << measure.name;
        const auto& cells = column->second;
        EXPECT_FALSE(std::all_of(cells.begin(), cells.end(), [](const auto& cell) { return cell.empty(); }))
            << measure.name;
    }
}

TEST(MeasuresOverTime, HaveNoLevelOfSpeechWhereNobodySpeaks) {
    const Samples sound = joined(joined(sine(2 * kSecond, -20), noise(2 * kSecond, -50)), sine(kSecond, -26));
    const KnownRun run(sound, scaled(sound, -6));
    EXPECT_NEAR(run.inSecond("input_speech_dbfs", 1), -20, 0.01);
    EXPECT_NEAR(run.inSecond("output_speech_dbfs", 1), -26, 0.01);
    EXPECT_NE(run.cell("input_speech_dbfs", 2), "") << "for 0.2 s and the envelope's decay";
    EXPECT_EQ(run.cell("input_speech_dbfs", 3), "");
    EXPECT_EQ(run.cell("output_speech_dbfs", 3), "");
    EXPECT_NEAR(run.inSecond("input_speech_dbfs", 4), -26, 0.1);
}

TEST(MeasuresOverTime, HaveNoLevelOfPausesWhereThereIsNone) {
    const Samples sound = joined(sine(8 * kSecond, -20), noise(2 * kSecond, -50));
    const KnownRun run(sound, scaled(sound, -10));
    EXPECT_EQ(run.cell("input_pause_dbfs", 7), "");
    EXPECT_EQ(run.cell("output_pause_dbfs", 7), "");
    for (const size_t second : {size_t{8}, size_t{9}}) {
        EXPECT_NEAR(run.inSecond("input_pause_dbfs", second), -50.5, 0.4)
            << "the softest blocks of the noise";
        EXPECT_NEAR(run.inSecond("output_pause_dbfs", second), -60.5, 0.4);
    }
}

TEST(MeasuresOverTime, CountTheMicrophonesThatAreFaultyThen) {
    Samples sound = joined(noise(2 * kSecond, -30), Samples(kSecond));
    sound.resize(sound.size() + kSecond / 4, 100);
    KnownRun run(sound, sound);
    for (int channel = 1; channel < 8; ++channel) {
        for (const size_t second : {size_t{0}, size_t{1}})
            run.sampleOf(channel, second * kSecond + static_cast<size_t>(channel)) += 1;
    }
    for (size_t frame = kSecond; frame < 2 * kSecond; ++frame) run.sampleOf(4, frame) = 0;
    EXPECT_EQ(run.cell("faulty_microphones", 0), "0");
    EXPECT_EQ(run.cell("faulty_microphones", 1), "1");
    EXPECT_EQ(run.cell("faulty_microphones", 2), "") << "all are silent";
    EXPECT_EQ(run.cell("faulty_microphones", 3), "") << "a quarter of a second";
}

}  // namespace
}  // namespace se_host_test
