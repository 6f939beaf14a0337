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

double siSdrOf(const Row& clean, const Row& output) {
    const double energy = product(clean, clean);
    const double common = product(clean, output);
    const double target = common * common / energy;
    // A single bit at least, so that the ratio is finite.
    const double distortion = std::max(product(output, output) - target, 1.0);
    return 10 * std::log10(std::max(target, 1.0) / distortion);
}

}  // namespace

std::optional<TalkerLikeness> TalkerLikeness::find(const std::vector<int16_t>& talker,
                                                   const std::vector<int16_t>& output) {
    const std::optional<EchoLags> lags = echoLags(talker, output);
    if (!lags || lags->median < 0) return std::nullopt;
    return TalkerLikeness(talker, output, static_cast<size_t>(lags->median));
}

std::optional<TalkerLikeness::Pair> TalkerLikeness::pairIn(Span span) const {
    const size_t begin = span.begin * kBlock;
    const size_t end = std::min(span.end * kBlock, output_->size() - std::min(lag_, output_->size()));
    if (begin >= end) return std::nullopt;
    Pair pair{excerpt(*talker_, begin, end - begin), excerpt(*output_, begin + lag_, end - begin)};
    if (product(pair.clean, pair.clean) == 0) return std::nullopt;
    return pair;
}

std::optional<double> TalkerLikeness::siSdrDb(Span span) const {
    const std::optional<Pair> pair = pairIn(span);
    if (!pair) return std::nullopt;
    return siSdrOf(pair->clean, pair->output);
}

std::optional<double> TalkerLikeness::intelligibility(Span span) const try {
    const std::optional<Pair> pair = pairIn(span);
    if (!pair) return std::nullopt;
    return stoi::intelligibility(pair->clean, pair->output, kEngineSampleRate);
} catch (const std::invalid_argument&) {
    return std::nullopt;
}

}  // namespace se_host
