// A talker in the noise of a room and among other talkers: what remains of each. Levels are those of the output against the
// centre microphone, unless a test says otherwise.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/measure.h"
#include "tools/scene/random.h"
#include "tools/scene/voice.h"

using namespace reference_engine_test;

namespace {

constexpr double kTalkerDbfs = -26;
constexpr double kTalkerStart = 5;  // seconds
constexpr double kSeconds = 9;
constexpr double kOnset = 0.6;

// Two voices from each of twelve directions.
se_scene::MicrophoneRows babble(const se_scene::SceneOptions& scene, double level_dbfs) {
    constexpr int kSides = 12;
    const auto frames = static_cast<size_t>(scene.seconds * se_scene::kSampleRate);
    se_scene::MicrophoneRows sum(kMicrophones, se_scene::Row(frames));
    for (uint32_t side = 0; side < kSides; ++side) {
        se_scene::SceneOptions options = scene;
        options.seed = scene.seed + 100 * (side + 1);
        options.talker_azimuth_deg = 360.0 * side / kSides;
        options.talker_distance_m = 2.2;
        options.talker_start_s = 0;
        se_scene::Random random(options.seed, se_scene::Stream::kTalker);
        for (int voice = 0; voice < 2; ++voice) {
            se_scene::Voice other = se_scene::kTalkerVoice;
            other.pitch_hz = 100 + 8.0 * side + 100 * voice;
            const se_scene::Row speech = se_scene::synthesiseSpeech(other, 2 * frames, random);
            options.speech.resize(frames);
            for (size_t i = 0; i < frames; ++i) options.speech[i] += speech[4000 + 700 * side + i];
        }
        const auto rows = se_scene::makeScene(options).talker;
        for (size_t m = 0; m < kMicrophones; ++m) {
            for (size_t i = 0; i < frames; ++i) sum[m][i] += rows[m][i];
        }
    }
    const double scale = se_scene::fromDecibels(level_dbfs - se_scene::levelDbfs(sum[0]));
    for (auto& row : sum) {
        for (float& sample : row) sample = static_cast<float>(scale * static_cast<double>(sample));
    }
    return sum;
}

struct Fit {
    double level_db;  // of the part that is a multiple of the reference
    double sdr_db;    // that part against the rest
};

Fit fit(const se_scene::Row& row, const se_scene::Row& reference) {
    double product = 0;
    for (size_t i = 0; i < row.size(); ++i) product += double{1} * row[i] * reference[i];
    const auto frames = static_cast<double>(row.size());
    const double scale = product / frames / se_scene::powerOf(reference);
    const double kept = scale * scale * se_scene::powerOf(reference);
    return {decibels(scale * scale), decibels(kept / (se_scene::powerOf(row) - kept))};
}

// Standard deviation of the level of 50 ms.
double fluctuation(const se_scene::Row& row) {
    constexpr size_t kStretch = 800;
    double sum = 0, squares = 0, count = 0;
    for (auto at = row.begin(); row.end() - at >= static_cast<ptrdiff_t>(kStretch); at += kStretch, ++count) {
        const double level = se_scene::levelDbfs(se_scene::Row(at, at + kStretch));
        sum += level;
        squares += level * level;
    }
    return std::sqrt(squares / count - sum / count * (sum / count));
}

class NoiseScenes : public EngineTest {
  protected:
    se_scene::SceneOptions options() const {
        se_scene::SceneOptions options;
        options.seconds = kSeconds;
        options.seed = 31;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.reverberation_s = 0.3;
        options.talker_level_dbfs = kTalkerDbfs;
        options.talker_start_s = kTalkerStart;
        options.sensor_noise_dbfs = -75;
        return options;
    }

    se_scene::Scene inRoomNoise(double snr_db) const {
        se_scene::SceneOptions noisy = options();
        noisy.diffuse_noise_dbfs = kTalkerDbfs - snr_db;
        return makeScene(noisy);
    }

    se_scene::Scene inBabble(double snr_db) const {
        se_scene::Scene scene = makeScene(options());
        scene.noise = babble(options(), kTalkerDbfs - snr_db);
        return scene;
    }

    // As the microphones hear it, in time with them.
    se_scene::Row played(const se_scene::MicrophoneRows& rows, bool bypassed = false) {
        engine.MMIfInit(0);
        engine.MMIfSetManualLocation(2, 0);
        engine.MMIfSetNoiseReductionBypass(bypassed);
        const Samples out = engine.process(rows);
        se_scene::Row row;
        for (size_t i = kDelay; i < out.size(); ++i) row.push_back(static_cast<float>(out[i]) / 32768);
        return row;
    }

    static se_scene::Row pause(const se_scene::Row& row) {
        return se_scene::excerpt(row, 1, kTalkerStart - 0.1);
    }

    static double pauseLoweredBy(const se_scene::Row& microphone, const se_scene::Row& out) {
        return se_scene::ratioDb(pause(microphone), pause(out));
    }

    // Against the talker alone through the same beam.
    Fit talkerIn(const se_scene::Scene& scene, const se_scene::Row& out, double begin_s, double end_s) {
        const se_scene::Row talker = played(scene.talker, true);
        return fit(se_scene::excerpt(out, begin_s, end_s), se_scene::excerpt(talker, begin_s, end_s));
    }
};
INSTANTIATE_FOR_EACH_BUILD(NoiseScenes);

}  // namespace

TEST_P(NoiseScenes, LowerRoomNoiseInPausesByFourteenDecibels) {
    const auto mixture = inRoomNoise(5).mixture();
    const se_scene::Row out = played(mixture);
    EXPECT_GE(pauseLoweredBy(mixture[0], out), 14);
    EXPECT_LE(fluctuation(pause(out)) - fluctuation(pause(mixture[0])), 1);
}

TEST_P(NoiseScenes, LowerBabbleByTwelveDecibelsWithoutPumping) {
    const auto mixture = inBabble(5).mixture();
    const se_scene::Row out = played(mixture);
    EXPECT_GE(pauseLoweredBy(mixture[0], out), 12);
    EXPECT_LE(fluctuation(pause(out)) - fluctuation(pause(mixture[0])), 2.5);
}

TEST_P(NoiseScenes, KeepTheTalkersLevelAndOnsetAtNoSnr) {
    for (const se_scene::Scene& scene : {inRoomNoise(0), inBabble(0)}) {
        const se_scene::Row out = played(scene.mixture());
        EXPECT_NEAR(talkerIn(scene, out, kTalkerStart, kSeconds - 0.1).level_db, 0, 3);
        EXPECT_GE(talkerIn(scene, out, kTalkerStart, kTalkerStart + kOnset).level_db, -3.5);
    }
}

TEST_P(NoiseScenes, RaiseTheSignalToDistortionRatioByFourDecibels) {
    for (const se_scene::Scene& scene : {inRoomNoise(0), inRoomNoise(10), inBabble(5)}) {
        const se_scene::Row out = played(scene.mixture());
        const auto spoken = [](const se_scene::Row& row) {
            return se_scene::excerpt(row, kTalkerStart, kSeconds - 0.1);
        };
        const double before = fit(spoken(scene.mixture()[0]), spoken(scene.talker[0])).sdr_db;
        EXPECT_GE(talkerIn(scene, out, kTalkerStart, kSeconds - 0.1).sdr_db - before, 4);
    }
}

// Its sound comes from all sides, as noise does.
TEST_P(NoiseScenes, KeepADistantTalkerInAnEchoingRoom) {
    se_scene::SceneOptions distant = options();
    distant.reverberation_s = 0.7;
    distant.talker_distance_m = 2.5;
    distant.diffuse_noise_dbfs = kTalkerDbfs - 5;
    const se_scene::Scene scene = makeScene(distant);
    EXPECT_NEAR(talkerIn(scene, played(scene.mixture()), kTalkerStart, kSeconds - 0.1).level_db, 0, 2);
}
