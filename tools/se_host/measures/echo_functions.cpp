// The echo, found in the recording itself, and what the engine says of it.
#include <algorithm>
#include <cmath>

#include "host/engine/sample_rate.h"
#include "tools/se_host/measures/functions.h"

namespace se_host {
namespace {

constexpr size_t kLeastEchoBlocks = 25;  // of echo alone in a second

Value milliseconds(int samples) {
    return samples * 1000.0 / kEngineSampleRate;
}

// The places of a span's blocks of echo alone.
Span echoAloneIn(const Analysis& analysis, Span span) {
    const std::vector<EchoAloneBlock>& blocks = analysis.echo_alone;
    const auto placeOf = [&](size_t index) {
        const auto is_before = [](const EchoAloneBlock& block, size_t other) { return block.index < other; };
        return static_cast<size_t>(std::lower_bound(blocks.begin(), blocks.end(), index, is_before) -
                                   blocks.begin());
    };
    return {placeOf(span.begin), placeOf(span.end)};
}

// In a span with enough echo alone.
Value ofEchoAloneIn(const Analysis& analysis, Span span,
                    double (*value)(const std::vector<EchoAloneBlock>&)) {
    const Span places = echoAloneIn(analysis, span);
    if (!analysis.echo || places.size() < kLeastEchoBlocks) return std::nullopt;
    const auto first = analysis.echo_alone.begin();
    return value({first + static_cast<ptrdiff_t>(places.begin), first + static_cast<ptrdiff_t>(places.end)});
}

// The estimate after the last block.
Value ofEngine(const Analysis& analysis, Span span, double EchoEstimate::*field) {
    const std::vector<EchoEstimate>& estimates = analysis.processed.echo;
    const size_t end = std::min(span.end, estimates.size());
    if (!analysis.recording.has_far_end || end <= span.begin) return std::nullopt;
    return estimates[end - 1].*field;
}

}  // namespace

Value echoLag(const Analysis& analysis, Span) {
    return analysis.lags ? milliseconds(analysis.lags->median) : std::nullopt;
}

Value echoLagThen(const Analysis& analysis, Span span) {
    const std::optional<int> lag = analysis.lags ? analysis.lags->heardAt(span.begin * kBlock) : std::nullopt;
    return lag ? milliseconds(*lag) : std::nullopt;
}

Value echoAloneSeconds(const Analysis& analysis, Span) {
    return analysis.echo ? Value(analysis.echo->seconds) : std::nullopt;
}

Value echoAloneSecondsThen(const Analysis& analysis, Span span) {
    if (!analysis.echo) return std::nullopt;
    return static_cast<double>(echoAloneIn(analysis, span).size()) / 100;
}

Value echoReturnLoss(const Analysis& analysis, Span) {
    return analysis.echo ? Value(analysis.echo->return_loss_db) : std::nullopt;
}

Value echoReturnLossThen(const Analysis& analysis, Span span) {
    return ofEchoAloneIn(analysis, span, echoReturnLossDb);
}

Value echoAloneLowered(const Analysis& analysis, Span) {
    return analysis.echo ? analysis.echo->lowered_db : std::nullopt;
}

Value echoAloneLoweredThen(const Analysis& analysis, Span span) {
    return ofEchoAloneIn(analysis, span, echoLoweredDb);
}

Value convergence(const Analysis& analysis, Span) {
    if (!analysis.convergence) return std::nullopt;
    return analysis.convergence->seconds;
}

// Seconds of echo alone before which the goal is not reached.
Value convergenceThen(const Analysis& analysis, Span span) {
    if (!analysis.convergence) return std::nullopt;
    const Span places = echoAloneIn(analysis, span);
    if (places.size() == 0) return std::nullopt;
    const auto first = analysis.convergence->reached.begin();
    const auto missed = std::count(first + static_cast<ptrdiff_t>(places.begin),
                                   first + static_cast<ptrdiff_t>(places.end), false);
    return static_cast<double>(missed) / 100;
}

Value engineDelay(const Analysis& analysis, Span span) {
    return ofEngine(analysis, span, &EchoEstimate::delay_ms);
}

Value engineDelaySince(const Analysis& analysis, Span span) {
    return ofEngine(analysis, span, &EchoEstimate::found_s);
}

Value engineDrift(const Analysis& analysis, Span span) {
    return ofEngine(analysis, span, &EchoEstimate::drift_ppm);
}

}  // namespace se_host
