#include "tools/se_host/sound/scene_parts.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/output/errors.h"
#include "tools/se_host/sound/audio_file.h"
#include "tools/se_host/sound/resample.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace se_host {
namespace {

using Samples = std::vector<int16_t>;
using Blocks = std::vector<bool>;

constexpr size_t kBlock = quill::media::se_wrapper::BLOCK_SIZE;
constexpr size_t kConvergence = 200;    // blocks in which an engine adapts to the room
constexpr std::ptrdiff_t kMargin = 10;  // blocks: longer than the output's lag
constexpr double kPresent = 1e-3;       // of the power of the loudest block
constexpr double kAudible = 1e-6;

Samples readPart(const std::string& path, const Recording& recording) {
    const AudioData part = resample(readAudioFile(path), kEngineSampleRate);
    if (part.channels <= kCentreMicrophone || part.frames() != recording.frames) {
        throw se_output::Failure("'" + path +
                                 "' is not a part of the recording: it has another length or one channel; " +
                                 "give the prefix that 'se_host scene --parts' wrote with it");
    }
    return channelOf(part, kCentreMicrophone);
}

std::vector<double> blockPowers(const Samples& samples) {
    std::vector<double> powers(samples.size() / kBlock);
    for (size_t block = 0; block < powers.size(); ++block) {
        const int16_t* const begin = samples.data() + block * kBlock;
        powers[block] = std::inner_product(begin, begin + kBlock, begin, 0.0);
    }
    return powers;
}

// The blocks with at least `share` of the loudest block's power, and a margin on both sides.
Blocks blocksWith(const std::vector<double>& powers, double share) {
    Blocks marked(powers.size());
    if (powers.empty()) return marked;
    const double threshold = share * *std::max_element(powers.begin(), powers.end());
    const auto count = static_cast<std::ptrdiff_t>(powers.size());
    for (std::ptrdiff_t block = 0; block < count; ++block) {
        if (!(powers[static_cast<size_t>(block)] > threshold)) continue;
        const auto begin = marked.begin() + std::max<std::ptrdiff_t>(block - kMargin, 0);
        std::fill(begin, marked.begin() + std::min(block + kMargin + 1, count), true);
    }
    return marked;
}

struct Energies {
    double above = 0, below = 0;
    size_t blocks = 0;
};

// In the chosen blocks from `begin` to before `end`.
template <typename Chosen>
Energies energiesIn(const std::vector<double>& above, const std::vector<double>& below, size_t begin,
                    size_t end, Chosen chosen) {
    Energies sum;
    for (size_t block = begin; block < std::min(end, above.size()); ++block) {
        if (!chosen(block)) continue;
        sum.above += above[block];
        sum.below += below[block];
        ++sum.blocks;
    }
    return sum;
}

std::optional<double> ratioDb(const Energies& energies, size_t least_blocks) {
    if (energies.blocks < least_blocks || energies.above == 0) return std::nullopt;
    // Silence counts as a single bit, so that a ratio is finite.
    return 10 * std::log10(energies.above / std::max(energies.below, 1.0));
}

}  // namespace

std::vector<std::string> scenePartPaths(const std::string& prefix) {
    return {prefix + "-talker.wav", prefix + "-noise.wav", prefix + "-echo.wav"};
}

SceneParts readSceneParts(const std::string& prefix, const Recording& recording) {
    const std::vector<std::string> paths = scenePartPaths(prefix);
    return {readPart(paths[0], recording), readPart(paths[1], recording), readPart(paths[2], recording)};
}

SceneEffect::Part SceneEffect::partOf(const Samples& samples) {
    Part part{blockPowers(samples), {}, {}};
    part.present = blocksWith(part.powers, kPresent);
    part.audible = blocksWith(part.powers, kAudible);
    return part;
}

SceneEffect::SceneEffect(const SceneParts& parts, const Samples& output)
    : talker_(partOf(parts.talker)),
      noise_(partOf(parts.noise)),
      echo_(partOf(parts.echo)),
      output_(blockPowers(output)) {}

Effect SceneEffect::within(size_t begin, size_t end, size_t least_blocks) const {
    const Energies echo = energiesIn(echo_.powers, output_, begin, end, [&](size_t block) {
        return echo_.present[block] && !talker_.audible[block];
    });
    const Energies noise = energiesIn(noise_.powers, output_, begin, end, [&](size_t block) {
        return !talker_.audible[block] && !echo_.audible[block];
    });
    const Energies talker = energiesIn(output_, talker_.powers, begin, end, [&](size_t block) {
        return talker_.present[block] && !echo_.audible[block];
    });
    return {ratioDb(echo, least_blocks), ratioDb(noise, least_blocks), ratioDb(talker, least_blocks)};
}

Effect SceneEffect::whole() const {
    Effect effect = within(kConvergence, output_.size());
    effect.talker_changed_db = within(0, output_.size()).talker_changed_db;
    return effect;
}

size_t SceneEffect::talkerBlocks(size_t begin, size_t end) const {
    const size_t size = talker_.present.size();
    const auto at = [&](size_t block) {
        return talker_.present.begin() + static_cast<std::ptrdiff_t>(std::min(block, size));
    };
    return static_cast<size_t>(std::count(at(begin), at(end), true));
}

Effect effectOf(const SceneParts& parts, const Samples& output) {
    return SceneEffect(parts, output).whole();
}

}  // namespace se_host
