// Talkers that change place: two in turn, and one that walks. In a room, against the centre microphone of the same engine;
// the talker's signal is its direct sound.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/measure.h"
#include "tools/scene/room.h"
#include "tools/scene/voice.h"

using namespace reference_engine_test;

namespace {

constexpr double kReverberation = 0.3;  // s
constexpr double kLevel = -26;          // dBFS, of the microphones
constexpr double kDistance = 1.2;       // m

// A talker that walks: the places on the way are this far apart.
constexpr double kWalkBegin = 1.5;  // s
constexpr double kWalkEnd = 3.5;
constexpr double kWalkDegrees = 90;
constexpr double kPlaceDegrees = 6;

struct Walk {
    uint32_t seed;  // of the voice
    double from_deg;
};

struct Pair {
    double first_deg;
    double second_deg;
};

enum Source { kBeam, kCentreMicrophone };  // the labels of seout_source

size_t frameAt(double seconds) {
    return static_cast<size_t>(seconds * se_scene::kSampleRate);
}

// Weight of each moment of a recording: which talker speaks, or how near it is to a place.
template <class Weight>
se_scene::Row weighed(const se_scene::Row& row, const Weight& weight) {
    se_scene::Row result(row.size());
    for (size_t i = 0; i < row.size(); ++i) {
        const double seconds = static_cast<double>(i) / se_scene::kSampleRate;
        result[i] = static_cast<float>(static_cast<double>(row[i]) * weight(seconds));
    }
    return result;
}

void add(const se_scene::MicrophoneRows& rows, se_scene::MicrophoneRows* sum) {
    if (sum->empty()) *sum = se_scene::MicrophoneRows(rows.size(), se_scene::Row(rows[0].size()));
    for (size_t m = 0; m < rows.size(); ++m) {
        for (size_t i = 0; i < rows[m].size(); ++i) (*sum)[m][i] += rows[m][i];
    }
}

// At the microphones, with reflections and without.
struct Sound {
    se_scene::MicrophoneRows room;
    se_scene::MicrophoneRows direct;
};

double dot(const Samples& a, const Samples& b) {
    double sum = 0;
    for (size_t i = 0; i < a.size(); ++i) sum += double{1} * a[i] * b[i];
    return sum;
}

// The part of `out` that is a multiple of the talker's sound, over the rest.
double distortionRatio(const Samples& talker, const Samples& out) {
    const double kept = dot(out, talker) * dot(out, talker) / dot(talker, talker);
    return decibels(kept / (dot(out, out) - kept));
}

class Talkers : public EngineTest {
  protected:
    se_scene::Row voice(const se_scene::Voice& voice, double seconds, uint32_t seed) const {
        se_scene::Random random(seed, se_scene::Stream::kTalker);
        return se_scene::synthesiseSpeech(voice, frameAt(seconds), random);
    }

    void addFrom(double azimuth_deg, const se_scene::Row& speech, Sound* sound) const {
        const auto microphones = se_scene::microphonePositions(arrayRadiusOf(GetParam()));
        const auto source = se_scene::atAzimuth(azimuth_deg, kDistance);
        add(se_scene::convolve(speech, se_scene::roomResponses({}, kReverberation, source, microphones)),
            &sound->room);
        add(se_scene::convolve(speech, se_scene::freeFieldResponses(source, microphones)), &sound->direct);
    }

    Sound levelled(Sound sound) const {
        const double factor = se_scene::fromDecibels(kLevel - se_scene::activeLevelDbfs(sound.room[0]));
        for (auto* rows : {&sound.room, &sound.direct}) {
            for (auto& row : *rows) row = weighed(row, [&](double) { return factor; });
        }
        return sound;
    }

    // Speech at one place, then on the way.
    Sound walking(const Walk& walk) const {
        const se_scene::Row speech = voice(se_scene::kTalkerVoice, kWalkEnd, walk.seed);
        const auto walked = [](double seconds) {
            return kWalkDegrees * std::max(0.0, (seconds - kWalkBegin) / (kWalkEnd - kWalkBegin));
        };
        Sound sound;
        for (double place = 0; place <= kWalkDegrees; place += kPlaceDegrees) {
            const auto near = [&](double seconds) {
                return std::max(0.0, 1 - std::abs(walked(seconds) - place) / kPlaceDegrees);
            };
            addFrom(walk.from_deg + place, weighed(speech, near), &sound);
        }
        return levelled(sound);
    }

    // The engine's output, earlier by its delay.
    Samples heard(const se_scene::MicrophoneRows& rows, Source source, bool reduce_noise) const {
        engine.MMIfInit(0);
        engine.SEDiagSetEnumAsInt(engine.diag("seout_source"), source);
        engine.MMIfSetNoiseReductionBypass(reduce_noise ? 0 : 1);
        return engine.process(rows);
    }

    // Of the direct sound of the talkers over all else, at the output against the centre microphone.
    double improvement(const Sound& sound, double begin_s) const {
        const auto part = [&](const Samples& samples) {
            return Samples(samples.begin() + static_cast<ptrdiff_t>(frameAt(begin_s) + kDelay),
                           samples.end());
        };
        const Samples talker = part(heard(sound.direct, kCentreMicrophone, false));
        const Samples before = part(heard(sound.room, kCentreMicrophone, false));
        const Samples after = part(heard(sound.room, kBeam, true));
        return distortionRatio(talker, after) - distortionRatio(talker, before);
    }

    // Of the output, against the centre microphone: the part that is a multiple of the direct sound.
    double levelChange(const Sound& sound, const Sound& all) const {
        const Samples talker = heard(sound.direct, kCentreMicrophone, false);
        const Samples before = heard(sound.room, kCentreMicrophone, false);
        const Samples after = heard(all.room, kBeam, true);
        return 2 * decibels(dot(after, talker) / dot(before, talker));
    }
};
INSTANTIATE_FOR_EACH_BUILD(Talkers);

}  // namespace

TEST_P(Talkers, InTurnAreBothHeard) {
    constexpr double kSeconds = 12;
    for (const Pair& pair : {Pair{40, 200}, Pair{95, 350}, Pair{300, 20}}) {
        const auto first = [](double seconds) { return std::fmod(seconds, 4) < 2 ? 1 : 0; };
        const auto second = [&](double seconds) { return 1 - first(seconds); };
        Sound one, other;
        addFrom(pair.first_deg, weighed(voice(se_scene::kTalkerVoice, kSeconds, 1), first), &one);
        addFrom(pair.second_deg, weighed(voice(se_scene::kFarEndVoice, kSeconds, 2), second), &other);
        one = levelled(one);
        other = levelled(other);
        Sound both = one;
        add(other.room, &both.room);
        add(other.direct, &both.direct);
        EXPECT_GT(improvement(both, 0), 0.6) << pair.first_deg;
        EXPECT_NEAR(levelChange(one, both), 0, 3) << pair.first_deg;
        EXPECT_NEAR(levelChange(other, both), 0, 3) << pair.first_deg;
    }
}

TEST_P(Talkers, ThatWalkAreFollowed) {
    double sum = 0;
    for (const Walk& walk : {Walk{3, 10}, Walk{4, 160}, Walk{5, 275}}) {
        const double gain = improvement(walking(walk), kWalkBegin);
        EXPECT_GT(gain, 1.0) << walk.from_deg;
        sum += gain;
    }
    EXPECT_GT(sum / 3, 1.5);
}

// Looks are 30 degrees apart: a beam that never lagged would be 7.5 degrees away in the mean.
TEST_P(Talkers, ThatWalkAreLookedAtWithLittleLag) {
    double sum = 0;
    int blocks = 0;
    for (const uint32_t seed : {61u, 63u}) {
        se_scene::SceneOptions options;
        options.seconds = kWalkEnd;
        options.seed = seed;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.reverberation_s = kReverberation;
        options.talker_azimuth_deg = 70.0 * (seed - 60);
        options.walk_deg = kWalkDegrees;
        options.walk_start_s = kWalkBegin;
        options.walk_s = kWalkEnd - kWalkBegin;
        std::vector<Samples> rows;
        for (const auto& row : makeScene(options).mixture()) rows.push_back(se_scene::toInt16(row));
        engine.MMIfInit(0);
        for (size_t start = 0; start + kBlock <= frameAt(kWalkEnd); start += kBlock) {
            std::vector<Samples> block;
            for (const auto& row : rows) {
                const auto begin = row.begin() + static_cast<ptrdiff_t>(start);
                block.emplace_back(begin, begin + kBlock);
            }
            engine.process(block);
            if (start < frameAt(kWalkBegin)) continue;
            const double now = static_cast<double>(start + kBlock) / se_scene::kSampleRate;
            sum += std::abs(std::remainder(30 * engine.location() - talkerAzimuthAt(options, now), 360));
            ++blocks;
        }
    }
    EXPECT_LT(sum / blocks, 18);
}

// The echo is louder than the talker. For a moment after the change, much of it is not removed.
TEST_P(Talkers, AreHeldWhenThePathOfTheEchoChanges) {
    se_scene::SceneOptions options;
    options.seconds = 7;
    options.seed = 32;
    options.array_radius_m = arrayRadiusOf(GetParam());
    options.reverberation_s = kReverberation;
    options.talker_azimuth_deg = 104;
    options.echo_level_dbfs = -20;
    options.echo_delay_ms = 164;
    options.echo_path_change_s = 5;
    const se_scene::Scene scene = se_scene::makeScene(options);
    const Samples far_end = se_scene::toInt16(scene.far_end);
    std::vector<Samples> rows;
    for (const auto& row : scene.mixture()) rows.push_back(se_scene::toInt16(row));

    int elsewhere = 0;
    for (size_t start = 0; start + kBlock <= scene.frames; start += kBlock) {
        Samples played(kBlock);
        std::vector<Samples> block;
        for (const auto& row : rows) {
            const auto begin = row.begin() + static_cast<ptrdiff_t>(start);
            block.emplace_back(begin, begin + kBlock);
        }
        engine.RcvIfProcessReceivePath(far_end.data() + start, played.data());
        engine.process(block);
        if (start > frameAt(5) && std::abs(engine.location() - 3) > 1) ++elsewhere;
    }
    EXPECT_LT(elsewhere, 10);  // blocks of 200
}
