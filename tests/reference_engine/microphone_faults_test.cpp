// Dead, stuck, noisy and weak microphones: found, shown, and replaced by what the others hear.
#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

constexpr double kFound = 1;  // second by which a fault is found

class MicrophoneFaults : public EchoTest {
  protected:
    std::vector<Samples> talker(double seconds = 3) const {
        se_scene::SceneOptions options;
        options.seconds = seconds;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.reverberation_s = 0.2;
        std::vector<Samples> rows;
        for (const auto& row : makeScene(options).mixture()) rows.push_back(se_scene::toInt16(row));
        return rows;
    }

    Samples played(const std::vector<Samples>& rows) const {
        start();
        return engine.process(rows);
    }

    // After the fault is found, of the output.
    static double levelAgainst(const Samples& whole, const Samples& out) {
        return decibels(powerOf(between(out, kFound, 3)) / powerOf(between(whole, kFound, 3)));
    }

    std::vector<int> faulty() const {
        const uint16_t* shown = engine.SEDiagGetUInt16Array(engine.diag("semic_faulty"));
        return std::vector<int>(shown, shown + kMicrophones);
    }
    float sharpness() const { return engine.SEDiagGetFloat32(engine.diag("mmfx_sharpness")); }
    static std::vector<int> only(size_t microphone) {
        std::vector<int> shown(kMicrophones);
        constexpr size_t kChannelOf[] = {1, 3, 2, 5, 6, 7, 4};  // of the rows
        shown[kChannelOf[microphone] - 1] = 1;
        return shown;
    }
};
INSTANTIATE_FOR_EACH_BUILD(MicrophoneFaults);

const std::vector<int> kNone(kMicrophones);

}  // namespace

TEST_P(MicrophoneFaults, CostTheTalkerOneDecibelAtMostWhenOneIsDead) {
    const std::vector<Samples> rows = talker();
    const Samples whole = played(rows);
    for (size_t m = 0; m < kMicrophones; ++m) {
        std::vector<Samples> broken = rows;
        broken[m].assign(broken[m].size(), 0);
        EXPECT_NEAR(levelAgainst(whole, played(broken)), 0, 1) << m;
        EXPECT_EQ(faulty(), only(m));
    }
}

TEST_P(MicrophoneFaults, AreStuckWeakAndNoisyOnesToo) {
    const std::vector<Samples> rows = talker();
    const Samples whole = played(rows);
    EXPECT_GT(sharpness(), 0.5F);
    const size_t frames = rows[0].size();
    Samples weak = rows[2];
    for (int16_t& sample : weak) sample = static_cast<int16_t>(sample / 32);
    for (const Samples& broken_row : {Samples(frames, 32767), weak, whiteNoise(frames, -6, 1)}) {
        std::vector<Samples> broken = rows;
        broken[2] = broken_row;
        EXPECT_NEAR(levelAgainst(whole, played(broken)), 0, 1);
        EXPECT_EQ(faulty(), only(2));
        EXPECT_LE(sharpness(), 0.5F);
    }
}

TEST_P(MicrophoneFaults, AreForgottenWhenTheyEnd) {
    const std::vector<Samples> rows = talker(3);
    std::vector<Samples> broken = rows;
    broken[4].assign(broken[4].size(), 0);
    played(broken);
    EXPECT_EQ(faulty(), only(4));
    const Samples again = engine.process(rows);
    EXPECT_EQ(faulty(), kNone);
    engine.MMIfInit(0);
    EXPECT_EQ(faulty(), kNone);
    start();
    engine.process(rows);
    const Samples healthy = engine.process(rows);
    EXPECT_EQ(between(again, 2.5, 3), between(healthy, 2.5, 3));
}

TEST_P(MicrophoneFaults, AreNotSensitivitiesThatDiffer) {
    std::vector<Samples> rows = talker();
    const Samples whole = played(rows);
    for (size_t m = 0; m < kMicrophones; ++m) {
        for (int16_t& sample : rows[m]) sample = static_cast<int16_t>(m % 2 == 0 ? sample / 2 : sample);
    }
    played(rows);
    EXPECT_EQ(faulty(), kNone);
}

TEST_P(MicrophoneFaults, AreNotFoundInSilence) {
    played(std::vector<Samples>(kMicrophones, Samples(100 * kBlock, 0)));
    EXPECT_EQ(faulty(), kNone);
}

// Its cleaned signal is predicted, not the one with the echo: no path has to be learned again.
TEST_P(MicrophoneFaults, LeaveTheEchoCancelled) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 6));
    std::vector<Samples> rows;
    for (const auto& row : scene.mixture()) rows.push_back(se_scene::toInt16(row));
    for (const size_t m : {size_t{0}, size_t{3}}) {
        std::vector<Samples> broken = rows;
        std::fill(broken[m].begin() + 3 * se_scene::kSampleRate, broken[m].end(), int16_t{0});
        start();
        const Samples out = process(se_scene::toInt16(scene.far_end), broken);
        EXPECT_EQ(faulty(), only(m));
        EXPECT_GE(decibels(powerOf(between(rows[0], 4, 6)) / powerOf(between(out, 4, 6))), 25) << m;
    }
}

// The first microphone tells the canceller the delay; here that is beyond the taps.
TEST_P(MicrophoneFaults, LeaveTheDelayOfTheEchoToAMicrophoneThatWorks) {
    se_scene::SceneOptions options = echoOptions(GetParam(), 6);
    options.echo_delay_ms = 480;
    options.dead_channel = 1;
    EXPECT_GT(enhancement(makeScene(options), 4, 6), 20);
    EXPECT_NEAR(engine.SEDiagGetFloat32(engine.diag("seaec_delay_ms")), 480, 2);
    EXPECT_EQ(faulty(), only(0));
}
