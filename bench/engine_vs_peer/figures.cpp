#include "bench/engine_vs_peer/figures.h"

#include <cmath>

#include "tools/scene/fft.h"

namespace engine_vs_peer {
namespace {

constexpr double kLowestHz = 300;
constexpr double kHighestHz = 7000;
constexpr int kLongestLag = 500;  // samples

// Band-limited, and earlier by `lag` samples. Zeros of the longest lag keep the ends from overlapping.
Row inBand(const Row& row, double lag) {
    const se_scene::Fft fft(se_scene::powerOfTwoFrom(row.size() + kLongestLag));
    se_scene::Spectrum spectrum(fft.size());
    std::copy(row.begin(), row.end(), spectrum.begin());
    fft.forward(spectrum);
    const size_t half = fft.size() / 2;
    for (size_t k = 0; k <= half; ++k) {
        const double turns = static_cast<double>(k) / static_cast<double>(fft.size());
        const double hertz = turns * se_scene::kSampleRate;
        const bool passes = hertz >= kLowestHz && hertz <= kHighestHz;
        spectrum[k] = passes ? se_scene::product(spectrum[k], std::polar(1.0, 2 * M_PI * turns * lag)) : 0;
        if (k > 0 && k < half) spectrum[fft.size() - k] = std::conj(spectrum[k]);
    }
    fft.inverse(spectrum);
    Row result(row.size());
    for (size_t i = 0; i < result.size(); ++i) result[i] = static_cast<float>(spectrum[i].real());
    return result;
}

Row excerpt(const Row& row, const Span& span) {
    return se_scene::excerpt(row, span.begin_s, span.end_s);
}

double dot(const Row& a, const Row& b) {
    double sum = 0;
    for (size_t i = 0; i < a.size(); ++i) sum += static_cast<double>(a[i]) * static_cast<double>(b[i]);
    return sum;
}

}  // namespace

double lagOf(const Row& talker, const Row& out, const Span& span) {
    return se_scene::delayBetween(excerpt(talker, span), excerpt(out, span), kLongestLag);
}

double echoLossDb(const Row& microphone, const Row& out, double lag, const Span& span) {
    const double lag_s = lag / se_scene::kSampleRate;
    return se_scene::ratioDb(excerpt(microphone, span),
                             excerpt(out, {span.begin_s + lag_s, span.end_s + lag_s}));
}

TalkerFigures talkerFigures(const Row& talker, const Row& out, double lag, const Span& span) {
    const Row reference = excerpt(inBand(talker, 0), span);
    const Row output = excerpt(inBand(out, lag), span);
    const double scale = dot(output, reference) / dot(reference, reference);
    const double kept = scale * scale * dot(reference, reference);
    return {se_scene::decibelsOfPower(scale * scale),
            se_scene::decibelsOfPower(kept / (dot(output, output) - kept))};
}

}  // namespace engine_vs_peer
