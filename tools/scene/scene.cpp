#include "tools/scene/scene.h"

#include <algorithm>
#include <cmath>

#include "tools/scene/babble.h"
#include "tools/scene/noise.h"
#include "tools/scene/playback.h"
#include "tools/scene/rows.h"
#include "tools/scene/scene_checks.h"
#include "tools/scene/source.h"
#include "tools/scene/talker.h"

namespace se_scene {

namespace {

constexpr double kFadeSeconds = 0.005;

MicrophoneRows makeNoise(const SceneOptions& options, size_t frames) {
    MicrophoneRows noise = silence(frames);
    if (options.sensor_noise_dbfs != kSilent) {
        Random random(options.seed, Stream::kSensorNoise);
        noise = sensorNoise(frames, fromDecibels(options.sensor_noise_dbfs), random);
    }
    if (options.diffuse_noise_dbfs != kSilent) {
        Random random(options.seed, Stream::kDiffuseNoise);
        MicrophoneRows diffuse =
            options.diffuse_noise_colour == NoiseColour::kBabble
                ? babble(frames, options, random)
                : diffuseNoise(frames, microphonePositions(options), options.diffuse_noise_colour, random);
        scale(diffuse, factorFor(options.diffuse_noise_dbfs, levelDbfs(diffuse[0])));
        add(noise, diffuse);
    }
    return noise;
}

Row makeFarEnd(const SceneOptions& options, size_t frames) {
    if (options.echo_level_dbfs == kSilent || options.far_end_level_dbfs == kSilent) return Row(frames);
    Random random(options.seed, Stream::kFarEnd);
    const Voice voice = withPitch(kFarEndVoice, options.far_end_pitch_hz);
    Row speech = speechOf(options.far_end_speech, voice, frames, random);
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
    const auto from = [&](double azimuth_deg) {
        return arriving(sound, atAzimuth(azimuth_deg, options.echo_distance_m), options);
    };
    MicrophoneRows echo = from(options.echo_azimuth_deg);
    const double factor = factorFor(options.echo_level_dbfs, activeLevelDbfs(echo[0]));
    if (options.echo_path_change_s) {
        changePath(*options.echo_path_change_s, from(options.echo_azimuth_after_deg), echo);
    }
    scale(echo, factor);
    return echo;
}

void silenceMicrophone(int channel, Scene& scene) {
    for (size_t m = 0; m < kMicrophones; ++m) {
        if (kChannelOfMicrophone[m] != channel) continue;
        for (MicrophoneRows* rows : {&scene.talker, &scene.noise, &scene.echo})
            (*rows)[m].assign(scene.frames, 0);
    }
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
    TalkerSound talkers = makeTalkers(options, scene.frames);
    scene.talker = std::move(talkers.rows);
    scene.talker_direct = std::move(talkers.direct);
    scene.noise = makeNoise(options, scene.frames);
    scene.far_end = makeFarEnd(options, scene.frames);
    scene.echo = makeEcho(options, scene.far_end);
    silenceMicrophone(options.dead_channel, scene);
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
