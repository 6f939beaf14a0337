#include "host/health/echo_lag.h"

#include <cmath>
#include <cstdlib>

#include "host/health/real_transform.h"

namespace se_host {
namespace {

using Samples = std::vector<int16_t>;

constexpr ptrdiff_t kReach = kLongestLagMs * kEngineSampleRate / 1000;
constexpr ptrdiff_t kPiece = 2 * kReach;  // of the far end; of the microphone with kReach on both sides
constexpr ptrdiff_t kSpan = kPiece + 2 * kReach;
constexpr double kLowestHz = 300;
constexpr double kHighestHz = 5000;
constexpr float kPresent = 0.01f;  // of the far end's mean power in the band: a bin with less has noise alone
constexpr ptrdiff_t kLeastPieces = 2;  // that agree; speech alone has a peak in a piece now and then
constexpr int kAgreement = kEngineSampleRate / 50;
constexpr double kClear = 7;  // times the root mean square over all lags; noise reaches 5

// Zeros outside of the sound.
std::vector<float> excerpt(const Samples& samples, ptrdiff_t from, ptrdiff_t length, ptrdiff_t at) {
    std::vector<float> piece(kSpan);
    const auto size = static_cast<ptrdiff_t>(samples.size());
    for (ptrdiff_t i = std::max<ptrdiff_t>(0, -from); i < length && from + i < size; ++i) {
        piece[static_cast<size_t>(at + i)] = samples[static_cast<size_t>(from + i)];
    }
    return piece;
}

size_t binOf(double hertz) {
    return static_cast<size_t>(hertz * kSpan / kEngineSampleRate);
}

// Of unit magnitude where the far end has sound, 0 elsewhere.
std::vector<std::complex<float>> phasesBetween(const std::vector<std::complex<float>>& far_end,
                                               const std::vector<std::complex<float>>& microphone) {
    float power = 0;
    for (size_t k = binOf(kLowestHz); k < binOf(kHighestHz); ++k) power += std::norm(far_end[k]);
    const float threshold = kPresent * power / static_cast<float>(binOf(kHighestHz) - binOf(kLowestHz));
    std::vector<std::complex<float>> phases(far_end.size());
    for (size_t k = binOf(kLowestHz); k < binOf(kHighestHz); ++k) {
        const std::complex<float> cross = std::conj(far_end[k]) * microphone[k];
        if (std::norm(far_end[k]) > threshold && std::abs(cross) > 0) phases[k] = cross / std::abs(cross);
    }
    return phases;
}

// Of the far end's piece from `start` on, in samples; nothing when the echo does not stand out.
std::optional<int> lagOfPiece(const Samples& far_end, const Samples& microphone, ptrdiff_t start,
                              RealTransform& transform) {
    const auto played = transform.forward(excerpt(far_end, start, kPiece, kReach));
    const auto heard = transform.forward(excerpt(microphone, start - kReach, kSpan, 0));
    const std::vector<float> correlation = transform.backward(phasesBetween(played, heard));
    double power = 0;
    ptrdiff_t best = 0;
    const auto at = [&](ptrdiff_t lag) {
        return double{correlation[static_cast<size_t>((lag + kSpan) % kSpan)]};
    };
    for (ptrdiff_t lag = -kReach; lag <= kReach; ++lag) {
        power += at(lag) * at(lag);
        if (at(lag) > at(best)) best = lag;
    }
    if (!(at(best) > kClear * std::sqrt(power / (2 * kReach + 1)))) return std::nullopt;
    return static_cast<int>(best);
}

}  // namespace

std::optional<EchoLags> echoLags(const Samples& far_end, const Samples& microphone) {
    RealTransform transform(static_cast<int>(kSpan));
    std::vector<std::optional<int>> found;
    std::vector<int> heard;
    for (ptrdiff_t start = 0; start < static_cast<ptrdiff_t>(far_end.size()); start += EchoLags::kHop) {
        found.push_back(lagOfPiece(far_end, microphone, start, transform));
        if (found.back()) heard.push_back(*found.back());
    }
    if (static_cast<ptrdiff_t>(heard.size()) < kLeastPieces) return std::nullopt;
    const auto middle = heard.begin() + static_cast<ptrdiff_t>(heard.size() / 2);
    std::nth_element(heard.begin(), middle, heard.end());
    const auto agrees = [median = *middle](int lag) { return std::abs(lag - median) < kAgreement; };
    const auto agreeing = std::count_if(heard.begin(), heard.end(), agrees);
    if (agreeing < kLeastPieces || agreeing < static_cast<ptrdiff_t>(heard.size() / 3)) return std::nullopt;
    return EchoLags{*middle, static_cast<double>(agreeing) / static_cast<double>(heard.size()), found};
}

}  // namespace se_host
