#include "tools/scene/talker.h"

#include <algorithm>
#include <cmath>

#include "tools/scene/propagation.h"
#include "tools/scene/rows.h"
#include "tools/scene/source.h"
#include "tools/scene/voice.h"

namespace se_scene {
namespace {

constexpr double kFadeSeconds = 0.005;
constexpr double kStepDeg = 3;  // between the places from which a walking talker is heard

// 1 from `start_s` to `end_s`, 0 outside, with short slopes inside.
double gateAt(double seconds, double start_s, double end_s) {
    const double slope = std::min(seconds - start_s, end_s - seconds) / kFadeSeconds;
    return std::clamp(slope, 0.0, 1.0);
}

// Turns that have begun before this one.
double turnAt(const SceneOptions& options, double seconds) {
    return std::floor(std::max(0.0, seconds - options.talker_start_s) / options.turn_s);
}

double walkedDeg(const SceneOptions& options, double seconds) {
    return options.walk_deg * std::clamp((seconds - options.walk_start_s) / options.walk_s, 0.0, 1.0);
}

// The gate of talker 0 or 1.
double gateOf(int talker, const SceneOptions& options, double seconds) {
    double start_s = options.talker_start_s;
    double end_s = options.talker_end_s;
    if (options.second_talker_azimuth_deg) {
        if (talkerAt(options, seconds) != talker) return 0;
        start_s += turnAt(options, seconds) * options.turn_s;
        end_s = std::min(end_s, start_s + options.turn_s);
    }
    return gateAt(seconds, start_s, end_s);
}

Row speechOf(int talker, const SceneOptions& options, size_t frames) {
    Random random(options.seed, talker == 0 ? Stream::kTalker : Stream::kSecondTalker);
    const Voice voice =
        withPitch(kTalkerVoice, talker == 0 ? options.talker_pitch_hz : options.second_talker_pitch_hz);
    const Row& given = talker == 0 ? options.speech : options.second_talker_speech;
    Row speech = speechOf(given, voice, frames, random);
    for (size_t i = 0; i < frames; ++i) {
        const double gate = gateOf(talker, options, static_cast<double>(i) / kSampleRate);
        speech[i] = static_cast<float>(gate * static_cast<double>(speech[i]));
    }
    return speech;
}

// Speech of one talker, from the first sample that is not 0 to the last.
struct Piece {
    size_t begin;
    Row samples;
};

Piece withoutSilence(const Row& row) {
    const auto sounds = [](float sample) { return sample != 0; };
    const auto begin = std::find_if(row.begin(), row.end(), sounds);
    const auto end = std::find_if(row.rbegin(), row.rend(), sounds).base();
    return {static_cast<size_t>(begin - row.begin()), begin < end ? Row(begin, end) : Row()};
}

void addFrom(double azimuth_deg, const Row& speech, const SceneOptions& options, TalkerSound& sum) {
    const Point place = atAzimuth(azimuth_deg, options.talker_distance_m);
    const Piece piece = withoutSilence(speech);
    if (piece.samples.empty()) return;
    Row sound = piece.samples;
    const auto tail = static_cast<size_t>((options.reverberation_s + 0.1) * kSampleRate);
    sound.resize(std::min(sound.size() + tail, speech.size() - piece.begin));
    const auto add = [&](const Row& from, Row& to) {
        for (size_t i = 0; i < from.size(); ++i) to[piece.begin + i] += from[i];
    };
    const MicrophoneRows rows = arriving(sound, place, options);
    for (size_t m = 0; m < rows.size(); ++m) add(rows[m], sum.rows[m]);
    ImpulseResponses direct = freeFieldResponses(place, microphonePositions(options));
    direct.rows.resize(1);
    add(convolve(sound, direct)[0], sum.direct);
}

// What a walking talker says at a moment arrives from the two places beside it, in proportion.
void addWalking(const Row& speech, const SceneOptions& options, TalkerSound& sum) {
    const int steps = std::max(1, static_cast<int>(std::ceil(std::abs(options.walk_deg) / kStepDeg)));
    const double step_deg = options.walk_deg / steps;
    for (int k = 0; k <= steps; ++k) {
        Row share = speech;
        for (size_t i = 0; i < share.size(); ++i) {
            const double walked = walkedDeg(options, static_cast<double>(i) / kSampleRate);
            const double weight = std::max(0.0, 1 - std::abs(walked / step_deg - k));
            share[i] = static_cast<float>(weight * static_cast<double>(share[i]));
        }
        addFrom(options.talker_azimuth_deg + k * step_deg, share, options, sum);
    }
}

}  // namespace

int talkerAt(const SceneOptions& options, double seconds) {
    if (!options.second_talker_azimuth_deg) return 0;
    return std::fmod(turnAt(options, seconds), 2) == 0 ? 0 : 1;
}

double talkerAzimuthAt(const SceneOptions& options, double seconds) {
    if (talkerAt(options, seconds) == 1) return *options.second_talker_azimuth_deg;
    return options.talker_azimuth_deg + walkedDeg(options, seconds);
}

TalkerSound makeTalkers(const SceneOptions& options, size_t frames) {
    TalkerSound sum{silence(frames), Row(frames)};
    if (options.talker_level_dbfs == kSilent) return sum;
    for (int talker = 0; talker < (options.second_talker_azimuth_deg ? 2 : 1); ++talker) {
        const Row speech = speechOf(talker, options, frames);
        TalkerSound sound{silence(frames), Row(frames)};
        if (talker == 1) {
            addFrom(*options.second_talker_azimuth_deg, speech, options, sound);
        } else if (options.walk_deg != 0) {
            addWalking(speech, options, sound);
        } else {
            addFrom(options.talker_azimuth_deg, speech, options, sound);
        }
        const double factor = factorFor(options.talker_level_dbfs, activeLevelDbfs(sound.rows[0]));
        scale(sound.rows, factor);
        scale(sound.direct, factor);
        add(sum.rows, sound.rows);
        for (size_t i = 0; i < frames; ++i) sum.direct[i] += sound.direct[i];
    }
    return sum;
}

}  // namespace se_scene
