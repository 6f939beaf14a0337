#include "tools/se_host/measures/talker_likeness.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

#include "host/health/echo_lag.h"
#include "tools/stoi/stoi.h"

namespace se_host {
namespace {

using Row = std::vector<float>;

double product(const Row& a, const Row& b) {
    return std::inner_product(
        a.begin(), a.end(), b.begin(), 0.0, [](double sum, double term) { return sum + term; },
        [](double x, double y) { return x * y; });
}

// `count` samples from `begin` on, without their mean.
Row excerpt(const std::vector<int16_t>& samples, size_t begin, size_t count) {
    const auto from = samples.begin() + static_cast<ptrdiff_t>(begin);
    const auto to = from + static_cast<ptrdiff_t>(count);
    const double mean = std::accumulate(from, to, 0.0) / static_cast<double>(count);
    Row row;
    row.reserve(count);
    std::transform(from, to, std::back_inserter(row),
                   [mean](int16_t sample) { return static_cast<float>(sample - mean); });
    return row;
}

double siSdrDb(const Row& clean, const Row& output) {
    const double energy = product(clean, clean);
    const double common = product(clean, output);
    const double target = common * common / energy;
    // A single bit at least, so that the ratio is finite.
    const double distortion = std::max(product(output, output) - target, 1.0);
    return 10 * std::log10(std::max(target, 1.0) / distortion);
}

std::optional<double> stoiOf(const Row& clean, const Row& output) try {
    return stoi::intelligibility(clean, output, kEngineSampleRate);
} catch (const std::invalid_argument&) {
    return std::nullopt;
}

}  // namespace

std::optional<TalkerLikeness> talkerLikeness(const std::vector<int16_t>& talker,
                                             const std::vector<int16_t>& output, size_t begin) {
    const std::optional<EchoLags> lags = echoLags(talker, output);
    if (!lags || lags->median < 0) return std::nullopt;
    const auto lag = static_cast<size_t>(lags->median);
    if (begin + lag >= output.size()) return std::nullopt;
    const size_t count = output.size() - begin - lag;
    const Row clean = excerpt(talker, begin, count);
    if (product(clean, clean) == 0) return std::nullopt;
    const Row processed = excerpt(output, begin + lag, count);
    return TalkerLikeness{siSdrDb(clean, processed), stoiOf(clean, processed)};
}

}  // namespace se_host
