// The talker's direction, and what is known with the parts of a simulated recording.
#include "tools/se_host/measures/direction.h"
#include "tools/se_host/measures/functions.h"

namespace se_host {
namespace {

constexpr size_t kLeastTalkerBlocks = 50;
constexpr size_t kLeastBlocks = 25;  // of a second

Value ofEffect(const Analysis& analysis, Span span, size_t least_blocks,
               std::optional<double> Effect::*field) {
    return analysis.effect ? analysis.effect->within(span.begin, span.end, least_blocks).*field
                           : std::nullopt;
}

bool isTalkerHeard(const Analysis& analysis, Span span) {
    return analysis.likeness && analysis.effect->talkerBlocks(span.begin, span.end) >= kLeastTalkerBlocks;
}

}  // namespace

Value azimuth(const Analysis& analysis, Span span) {
    const std::optional<MeanDirection> direction = meanDirection(analysis.processed.directions, span);
    return direction ? direction->azimuth_degrees : std::nullopt;
}

Value deviation(const Analysis& analysis, Span span) {
    const std::optional<MeanDirection> direction = meanDirection(analysis.processed.directions, span);
    return direction ? Value(direction->deviation_degrees) : std::nullopt;
}

Value echoLowered(const Analysis& analysis, Span span) {
    return ofEffect(analysis, span, 1, &Effect::echo_lowered_db);
}

Value echoLoweredThen(const Analysis& analysis, Span span) {
    return ofEffect(analysis, span, kLeastBlocks, &Effect::echo_lowered_db);
}

Value noiseLowered(const Analysis& analysis, Span span) {
    return ofEffect(analysis, span, 1, &Effect::noise_lowered_db);
}

Value noiseLoweredThen(const Analysis& analysis, Span span) {
    return ofEffect(analysis, span, kLeastBlocks, &Effect::noise_lowered_db);
}

Value talkerChange(const Analysis& analysis, Span span) {
    return ofEffect(analysis, span, 1, &Effect::talker_changed_db);
}

Value talkerChangeThen(const Analysis& analysis, Span span) {
    return ofEffect(analysis, span, kLeastBlocks, &Effect::talker_changed_db);
}

Value siSdr(const Analysis& analysis, Span span) {
    return isTalkerHeard(analysis, span) ? analysis.likeness->siSdrDb(span) : std::nullopt;
}

Value intelligibility(const Analysis& analysis, Span span) {
    return isTalkerHeard(analysis, span) ? analysis.likeness->intelligibility(span) : std::nullopt;
}

}  // namespace se_host
