#include "tools/scene/scene.h"

#include <algorithm>
#include <cmath>

#include "tools/scene/measure.h"
#include "tools/scene/noise.h"
#include "tools/scene/playback.h"
#include "tools/scene/room.h"
#include "tools/scene/scene_checks.h"
#include "tools/scene/voice.h"

namespace se_scene {

namespace {

constexpr double kFadeSeconds = 0.005;

MicrophoneRows silence(size_t frames) {
    return MicrophoneRows(kMicrophones, Row(frames));
}

void scale(Row& row, double factor) {
    for (float& sample : row) sample = static_cast<float>(factor * static_cast<double>(sample));
}

void add(MicrophoneRows& sum, const MicrophoneRows& part) {
    for (size_t m = 0; m < sum.size(); ++m) {
        for (size_t i = 0; i < sum[m].size(); ++i) sum[m][i] += part[m][i];
    }
}

// The factor that brings a level to the one asked for; silence stays silence.
double factorFor(double asked_dbfs, double present_dbfs) {
    return present_dbfs == kSilent ? 0 : fromDecibels(asked_dbfs - present_dbfs);
}

void scaleRows(MicrophoneRows& rows, double factor) {
    for (Row& row : rows) scale(row, factor);
}

Row speechFor(const Row& given, const Voice& voice, Stream stream, const SceneOptions& options,
              size_t frames) {
    if (given.empty()) {
        Random random(options.seed, stream);
        return synthesiseSpeech(voice, frames, random);
    }
    Row repeated(frames);
    for (size_t i = 0; i < frames; ++i) repeated[i] = given[i % given.size()];
    return repeated;
}

// 1 from `start_s` to `end_s`, 0 outside, with short slopes inside.
double gateAt(double seconds, double start_s, double end_s) {
    const double slope = std::min(seconds - start_s, end_s - seconds) / kFadeSeconds;
    return std::clamp(slope, 0.0, 1.0);
}

void speakOnlyBetween(double start_s, double end_s, Row& speech) {
    if (start_s <= 0 && end_s * kSampleRate >= static_cast<double>(speech.size())) return;
    for (size_t i = 0; i < speech.size(); ++i) {
        const double gate = gateAt(static_cast<double>(i) / kSampleRate, start_s, end_s);
        speech[i] = static_cast<float>(gate * static_cast<double>(speech[i]));
    }
}

ImpulseResponses responsesFrom(double azimuth_deg, double distance_m, const SceneOptions& options) {
    const Point source = atAzimuth(azimuth_deg, distance_m);
    const MicrophonePositions microphones = microphonePositions(options);
    if (options.reverberation_s <= 0) return freeFieldResponses(source, microphones);
    return roomResponses(options.room, options.reverberation_s, source, microphones);
}

MicrophoneRows makeTalker(const SceneOptions& options, size_t frames) {
    if (options.talker_level_dbfs == kSilent) return silence(frames);
    Row speech = speechFor(options.speech, kTalkerVoice, Stream::kTalker, options, frames);
    speakOnlyBetween(options.talker_start_s, options.talker_end_s, speech);
    MicrophoneRows rows =
        convolve(speech, responsesFrom(options.talker_azimuth_deg, options.talker_distance_m, options));
    scaleRows(rows, factorFor(options.talker_level_dbfs, activeLevelDbfs(rows[0])));
    return rows;
}

MicrophoneRows makeNoise(const SceneOptions& options, size_t frames) {
    MicrophoneRows noise = silence(frames);
    if (options.sensor_noise_dbfs != kSilent) {
        Random random(options.seed, Stream::kSensorNoise);
        noise = sensorNoise(frames, fromDecibels(options.sensor_noise_dbfs), random);
    }
    if (options.diffuse_noise_dbfs != kSilent) {
        Random random(options.seed, Stream::kDiffuseNoise);
        MicrophoneRows diffuse =
            diffuseNoise(frames, microphonePositions(options), options.diffuse_noise_colour, random);
        scaleRows(diffuse, factorFor(options.diffuse_noise_dbfs, levelDbfs(diffuse[0])));
        add(noise, diffuse);
    }
    return noise;
}

Row makeFarEnd(const SceneOptions& options, size_t frames) {
    if (options.echo_level_dbfs == kSilent || options.far_end_level_dbfs == kSilent) return Row(frames);
    Row speech = speechFor(options.far_end_speech, kFarEndVoice, Stream::kFarEnd, options, frames);
    scale(speech, factorFor(options.far_end_level_dbfs, activeLevelDbfs(speech)));
    return speech;
}

// From the change on, what arrives by the new path replaces what arrived by the old one, within a few
// milliseconds.
void changePath(double change_s, const MicrophoneRows& after, MicrophoneRows& echo) {
    for (size_t m = 0; m < echo.size(); ++m) {
        for (size_t i = 0; i < echo[m].size(); ++i) {
            const double passed = static_cast<double>(i) / kSampleRate - change_s;
            const double share = std::clamp(passed / kFadeSeconds, 0.0, 1.0);
            const double blend =
                (1 - share) * static_cast<double>(echo[m][i]) + share * static_cast<double>(after[m][i]);
            echo[m][i] = static_cast<float>(blend);
        }
    }
}

MicrophoneRows makeEcho(const SceneOptions& options, const Row& far_end) {
    if (options.echo_level_dbfs == kSilent) return silence(far_end.size());
    const Row sound = played(far_end, options);
    const auto arriving = [&](double azimuth_deg) {
        return convolve(sound, responsesFrom(azimuth_deg, options.echo_distance_m, options));
    };
    MicrophoneRows echo = arriving(options.echo_azimuth_deg);
    const double factor = factorFor(options.echo_level_dbfs, activeLevelDbfs(echo[0]));
    if (options.echo_path_change_s) {
        changePath(*options.echo_path_change_s, arriving(options.echo_azimuth_after_deg), echo);
    }
    scaleRows(echo, factor);
    return echo;
}

}  // namespace

MicrophoneRows Scene::mixture() const {
    MicrophoneRows sum = talker;
    add(sum, noise);
    add(sum, echo);
    return sum;
}

Scene makeScene(const SceneOptions& options) {
    checkOptions(options);
    Scene scene;
    scene.frames = static_cast<size_t>(std::lround(options.seconds * kSampleRate));
    scene.talker = makeTalker(options, scene.frames);
    scene.noise = makeNoise(options, scene.frames);
    scene.far_end = makeFarEnd(options, scene.frames);
    scene.echo = makeEcho(options, scene.far_end);
    return scene;
}

std::vector<int16_t> toInt16(const Row& row) {
    std::vector<int16_t> samples;
    samples.reserve(row.size());
    for (const float sample : row) {
        const double scaled = std::nearbyint(static_cast<double>(sample) * 32768);
        samples.push_back(static_cast<int16_t>(std::clamp(scaled, -32768.0, 32767.0)));
    }
    return samples;
}

std::vector<int16_t> interleave(const MicrophoneRows& rows, const Row& far_end) {
    std::vector<int16_t> recording(rows.front().size() * kChannels);
    const auto fill = [&recording](const Row& row, int channel) {
        size_t at = static_cast<size_t>(channel);
        for (const int16_t sample : toInt16(row)) {
            recording[at] = sample;
            at += kChannels;
        }
    };
    fill(far_end, 0);
    for (size_t m = 0; m < rows.size(); ++m) fill(rows[m], kChannelOfMicrophone[m]);
    return recording;
}

}  // namespace se_scene
