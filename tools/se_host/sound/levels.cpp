#include "tools/se_host/sound/levels.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace se_host {
namespace {

constexpr size_t kBlock = quill::media::se_wrapper::BLOCK_SIZE;
constexpr size_t kPauseShare = 10;  // one block in this many

double meanSquare(const int16_t* begin, const int16_t* end) {
    if (begin == end) return 0;
    return std::inner_product(begin, end, begin, 0.0) / static_cast<double>(end - begin);
}

// A last block that is not whole does not count, unless it is the only one.
double pauseMeanSquare(const std::vector<int16_t>& samples) {
    std::vector<double> blocks;
    const int16_t* const end = samples.data() + samples.size();
    for (const int16_t* block = samples.data(); end - block >= static_cast<std::ptrdiff_t>(kBlock);
         block += kBlock) {
        blocks.push_back(meanSquare(block, block + kBlock));
    }
    if (blocks.empty()) return meanSquare(samples.data(), end);
    const size_t quietest = std::max<size_t>(1, blocks.size() / kPauseShare);
    std::sort(blocks.begin(), blocks.end());
    return std::accumulate(blocks.begin(), blocks.begin() + static_cast<std::ptrdiff_t>(quietest), 0.0) /
           static_cast<double>(quietest);
}

double largestMagnitude(const std::vector<int16_t>& samples) {
    double peak = 0;
    for (const double sample : samples) peak = std::max(peak, std::abs(sample));
    return peak;
}

double dbfs(double amplitude) {
    return 20 * std::log10(amplitude / 32768);
}

}  // namespace

Level levelOf(const std::vector<int16_t>& samples) {
    return {dbfs(std::sqrt(meanSquare(samples.data(), samples.data() + samples.size()))),
            dbfs(largestMagnitude(samples)), dbfs(std::sqrt(pauseMeanSquare(samples)))};
}

}  // namespace se_host
