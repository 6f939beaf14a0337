#include "bench/engine_vs_peer/figures.h"

#include <algorithm>
#include <cmath>

#include "tools/scene/fft.h"
#include "tools/stoi/stoi.h"

namespace engine_vs_peer {
namespace {

constexpr double kLowestHz = 300;
constexpr double kHighestHz = 7000;
constexpr int kLongestLag = 800;  // samples

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

constexpr double kPieceSeconds = 0.02;

Row excerpt(const Row& row, const Span& span) {
    return se_scene::excerpt(row, span.begin_s, span.end_s);
}

Row excerpt(const Row& row, const Spans& spans, double lag_s = 0) {
    Row all;
    for (const Span& span : spans) {
        const Row part = excerpt(row, {span.begin_s + lag_s, span.end_s + lag_s});
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

double dot(const Row& a, const Row& b) {
    double sum = 0;
    for (size_t i = 0; i < a.size(); ++i) sum += static_cast<double>(a[i]) * static_cast<double>(b[i]);
    return sum;
}

}  // namespace

Spans whereLower(const Row& row, const Row& other, double decibels, const Span& within) {
    Spans pieces;
    std::vector<bool> lower;
    for (double begin_s = within.begin_s; begin_s + kPieceSeconds <= within.end_s; begin_s += kPieceSeconds) {
        pieces.push_back({begin_s, begin_s + kPieceSeconds});
        lower.push_back(se_scene::ratioDb(excerpt(other, pieces.back()), excerpt(row, pieces.back())) >=
                        decibels);
    }
    Spans spans;
    for (size_t i = 1; i + 1 < pieces.size(); ++i) {
        if (lower[i - 1] && lower[i] && lower[i + 1]) spans.push_back(pieces[i]);
    }
    return spans;
}

double lossDb(const Row& microphone, const Row& out, double lag, const Spans& spans) {
    if (spans.empty()) return NAN;
    return se_scene::ratioDb(excerpt(microphone, spans), excerpt(out, spans, lag / se_scene::kSampleRate));
}

TalkerFigures talkerFigures(const Row& talker, const Row& out, double lag, const Spans& spans) {
    const Row reference = excerpt(inBand(talker, 0), spans);
    const Row output = excerpt(inBand(out, lag), spans);
    const double scale = dot(output, reference) / dot(reference, reference);
    const double kept = scale * scale * dot(reference, reference);
    return {scale, se_scene::decibelsOfPower(kept / (dot(output, output) - kept))};
}

double intelligibility(const Row& talker, const Row& out, double lag, const Span& span) {
    const double lag_s = std::round(lag) / se_scene::kSampleRate;
    Row clean = excerpt(talker, span);
    Row processed = excerpt(out, {span.begin_s + lag_s, span.end_s + lag_s});
    clean.resize(std::min(clean.size(), processed.size()));
    processed.resize(clean.size());
    return stoi::intelligibility(clean, processed, se_scene::kSampleRate);
}

}  // namespace engine_vs_peer
