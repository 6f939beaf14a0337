#include "bench/engine_vs_peer/drawn_speech.h"

#include <cmath>
#include <numeric>
#include <utility>

#include "tools/scene/random.h"

namespace engine_vs_peer {
namespace {

using se_scene::Random;
using se_scene::Row;

constexpr double kShortestPause = 0.2;  // seconds
constexpr double kLongestPause = 0.6;
constexpr size_t kBabbleVoices = 12;

enum Part : size_t { kTalker, kSecondTalker, kFarEnd };

// 0 to count - 1 in random order (Fisher and Yates).
std::vector<size_t> shuffled(size_t count, Random& random) {
    std::vector<size_t> order(count);
    std::iota(order.begin(), order.end(), size_t{0});
    for (size_t i = count; i > 1; --i) std::swap(order[i - 1], order[random.below(i)]);
    return order;
}

size_t samplesOf(double seconds) {
    return static_cast<size_t>(std::lround(seconds * se_scene::kSampleRate));
}

// Utterances with pauses between them. All are heard before one is heard again.
Row speechOf(const RecordedTalker& talker, double seconds, Random& random) {
    const size_t frames = samplesOf(seconds);
    Row row;
    std::vector<size_t> left;
    while (row.size() < frames) {
        if (left.empty()) left = shuffled(talker.utterances.size(), random);
        const Row& utterance = talker.utterances[left.back()];
        left.pop_back();
        row.insert(row.end(), utterance.begin(), utterance.end());
        row.resize(row.size() + samplesOf(random.uniform(kShortestPause, kLongestPause)));
    }
    row.resize(frames);
    return row;
}

}  // namespace

void giveRecordedSpeech(const RecordedTalkers& talkers, se_scene::SceneOptions& scene) {
    Random random(scene.seed, se_scene::Stream::kRecordedSpeech);
    const std::vector<size_t> order = shuffled(talkers.size(), random);
    const auto speech = [&](size_t place) { return speechOf(talkers[order[place]], scene.seconds, random); };
    scene.speech = speech(kTalker);
    scene.second_talker_speech = speech(kSecondTalker);
    scene.far_end_speech = speech(kFarEnd);
    if (scene.diffuse_noise_colour != se_scene::NoiseColour::kBabble) return;
    for (size_t i = 0; i < kBabbleVoices; ++i) {
        scene.babble_speech.push_back(speech(1 + random.below(talkers.size() - 1)));
    }
}

}  // namespace engine_vs_peer
