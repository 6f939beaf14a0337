// Clipped samples and microphones that are faulty.
#include "tests/tools/se_host/measures/known_run.h"

namespace se_host_test {
namespace {

TEST(MeasuredClipping, IsTheShareOfSamplesAtALimit) {
    KnownRun run(sine(kSecond, -20), sine(kSecond, -20));
    for (size_t frame = 0; frame < 28; ++frame)
        run.sampleOf(3, frame) = frame % 2 == 0 ? INT16_MIN : INT16_MAX;
    run.sampleOf(0, 100) = INT16_MAX;  // the far end's channel is not a microphone
    run.processed.output[5] = INT16_MIN;
    run.processed.output[6] = INT16_MAX - 1;
    EXPECT_DOUBLE_EQ(*run.value("input_clipped_percent"), 100 * 28 / (7 * 16000.0));
    EXPECT_DOUBLE_EQ(*run.value("output_clipped_percent"), 0.0063) << "1 of 16000, rounded to 0.0001";
}

TEST(MeasuredClipping, LeavesOutThePaddingOfTheLastBlock) {
    KnownRun run(Samples(150, 100), Samples(150, 100));
    run.recording.microphones.samples.resize(160 * 8, INT16_MAX);
    EXPECT_EQ(run.value("input_clipped_percent"), 0);
}

TEST(MeasuredMicrophones, ThatAreDeadAreCounted) {
    KnownRun run(noise(2 * kSecond, -30), noise(2 * kSecond, -30));
    run.sampleOf(1, 0) += 1;  // else all would be one signal, which is a finding
    for (int channel = 2; channel < 8; ++channel) run.sampleOf(channel, static_cast<size_t>(channel)) += 1;
    EXPECT_EQ(run.value("faulty_microphones"), 0);
    for (size_t frame = 0; frame < run.recording.frames; ++frame) {
        run.sampleOf(4, frame) = 0;
        run.sampleOf(6, frame) = 0;
    }
    EXPECT_EQ(run.value("faulty_microphones"), 2);
}

}  // namespace
}  // namespace se_host_test
