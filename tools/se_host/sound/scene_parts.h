// The parts of a simulated recording, and the engine's effect on each of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/se_host/sound/recording.h"

namespace se_host {

// Each part at the centre microphone: 16 kHz, as long as the recording.
struct SceneParts {
    std::vector<int16_t> talker;
    std::vector<int16_t> noise;
    std::vector<int16_t> echo;
};

// PREFIX-talker.wav, -noise.wav and -echo.wav, as `se_host scene --parts PREFIX` writes them.
std::vector<std::string> scenePartPaths(const std::string& prefix);

// fails: Failure when one is missing or does not fit the recording.
SceneParts readSceneParts(const std::string& prefix, const Recording& recording);

// Decibels between the centre microphone and the output; nothing where the scene has no such interval.
struct Effect {
    // Echo return loss enhancement: echo over the output, while the talker is silent, after the first two seconds.
    std::optional<double> echo_lowered_db;
    // Noise over the output, while talker and echo are silent, after the first two seconds.
    std::optional<double> noise_lowered_db;
    // Output over the talker, while it speaks and the echo is silent.
    std::optional<double> talker_changed_db;
};

// The effect in any part of a recording. `output` may lag the parts by up to 100 ms.
class SceneEffect {
  public:
    SceneEffect(const SceneParts& parts, const std::vector<int16_t>& output);

    // In the blocks of 10 ms from `begin` to before `end`, the first two seconds included; of each interval at least
    // `least_blocks` have to be there.
    Effect within(size_t begin, size_t end, size_t least_blocks = 1) const;
    // Of the whole recording.
    Effect whole() const;
    // Those of these blocks in which the talker is present.
    size_t talkerBlocks(size_t begin, size_t end) const;

  private:
    struct Part {
        std::vector<double> powers;  // of each block
        std::vector<bool> present, audible;
    };
    static Part partOf(const std::vector<int16_t>& samples);

    Part talker_, noise_, echo_;
    std::vector<double> output_;
};

// SceneEffect(parts, output).whole()
Effect effectOf(const SceneParts& parts, const std::vector<int16_t>& output);

}  // namespace se_host
