#include "tools/se_host/measures/table.h"

#include <algorithm>
#include <cmath>

#include "tools/se_host/measures/convergence.h"
#include "tools/se_host/measures/direction.h"
#include "tools/se_host/measures/speech_level.h"
#include "tools/se_host/sound/levels.h"
#include "tools/se_host/sound/microphone_check.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

using Samples = std::vector<int16_t>;
using Value = std::optional<double>;

constexpr double kSteps = 1e4;           // of a value, in 1
constexpr size_t kLeastEchoBlocks = 25;  // of echo alone in a second

Samples excerpt(const Samples& samples, Span span) {
    const auto at = [&](size_t block) {
        return samples.begin() + static_cast<ptrdiff_t>(std::min(block * kBlock, samples.size()));
    };
    return {at(span.begin), at(span.end)};
}

template <double Level::*Field>
Value ofInput(const Analysis& analysis, Span span) {
    return levelOf(excerpt(analysis.microphone, span)).*Field;
}

template <double Level::*Field>
Value ofOutput(const Analysis& analysis, Span span) {
    return levelOf(excerpt(analysis.processed.output, span)).*Field;
}

Value inputSpeech(const Analysis& analysis, Span) {
    return activeSpeechLevel(analysis.microphone);
}

Value outputSpeech(const Analysis& analysis, Span) {
    return activeSpeechLevel(analysis.processed.output);
}

bool isLimit(int16_t sample) {
    return sample == INT16_MIN || sample == INT16_MAX;
}

Value percent(size_t part, size_t whole) {
    if (whole == 0) return std::nullopt;
    return 100 * static_cast<double>(part) / static_cast<double>(whole);
}

Value inputClipped(const Analysis& analysis, Span span) {
    const AudioData& sound = analysis.recording.microphones;
    const size_t end = std::min(span.end * kBlock, analysis.recording.frames);
    size_t clipped = 0, all = 0;
    for (size_t frame = span.begin * kBlock; frame < end; ++frame) {
        const int16_t* const samples = sound.samples.data() + frame * static_cast<size_t>(sound.channels);
        clipped += static_cast<size_t>(std::count_if(samples + 1, samples + 1 + kArrayMicrophones, isLimit));
        all += kArrayMicrophones;
    }
    return percent(clipped, all);
}

Value outputClipped(const Analysis& analysis, Span span) {
    const Samples samples = excerpt(analysis.processed.output, span);
    return percent(static_cast<size_t>(std::count_if(samples.begin(), samples.end(), isLimit)),
                   samples.size());
}

Value pauseReduction(const Analysis& analysis, Span span) {
    return pauseReductionDb(analysis.pauses, span);
}

Value faultyMicrophones(const Analysis& analysis, Span) {
    return static_cast<double>(findingsOf(checkMicrophones(analysis.recording)).size());
}

Value milliseconds(int samples) {
    return samples * 1000.0 / kEngineSampleRate;
}

Value echoLag(const Analysis& analysis, Span) {
    return analysis.lags ? milliseconds(analysis.lags->median) : std::nullopt;
}

Value echoLagThen(const Analysis& analysis, Span span) {
    return analysis.lags ? milliseconds(analysis.lags->at(span.begin * kBlock)) : std::nullopt;
}

Value ofEchoAlone(const Analysis& analysis, Value (*value)(const EchoAlone&)) {
    const std::optional<EchoAlone> echo = echoAlone(analysis.echo_alone);
    return echo ? value(*echo) : std::nullopt;
}

Value echoAloneSeconds(const Analysis& analysis, Span) {
    return ofEchoAlone(analysis, [](const EchoAlone& echo) { return Value(echo.seconds); });
}

Value echoReturnLoss(const Analysis& analysis, Span) {
    return ofEchoAlone(analysis, [](const EchoAlone& echo) { return Value(echo.return_loss_db); });
}

Value echoAloneLowered(const Analysis& analysis, Span) {
    return ofEchoAlone(analysis, [](const EchoAlone& echo) { return echo.lowered_db; });
}

Value echoAloneLoweredThen(const Analysis& analysis, Span span) {
    std::vector<EchoAloneBlock> blocks;
    for (const EchoAloneBlock& block : analysis.echo_alone) {
        if (span.contains(block.index)) blocks.push_back(block);
    }
    if (blocks.size() < kLeastEchoBlocks) return std::nullopt;
    return echoLoweredDb(blocks);
}

Value convergence(const Analysis& analysis, Span) {
    return convergenceSeconds(analysis.echo_alone);
}

template <double EchoEstimate::*Field>
Value ofEngine(const Analysis& analysis, Span) {
    if (!analysis.recording.has_far_end || !analysis.processed.echo) return std::nullopt;
    return *analysis.processed.echo.*Field;
}

Value azimuth(const Analysis& analysis, Span span) {
    const std::optional<MeanDirection> direction = meanDirection(analysis.processed.directions, span);
    return direction ? direction->azimuth_degrees : std::nullopt;
}

Value deviation(const Analysis& analysis, Span span) {
    const std::optional<MeanDirection> direction = meanDirection(analysis.processed.directions, span);
    return direction ? Value(direction->deviation_degrees) : std::nullopt;
}

template <std::optional<double> Effect::*Field>
Value ofEffect(const Analysis& analysis, Span span) {
    return analysis.effect ? analysis.effect->within(span.begin, span.end).*Field : std::nullopt;
}

Value siSdr(const Analysis& analysis, Span) {
    if (!analysis.likeness) return std::nullopt;
    return analysis.likeness->si_sdr_db;
}

Value intelligibility(const Analysis& analysis, Span) {
    return analysis.likeness ? analysis.likeness->stoi : std::nullopt;
}

constexpr MeasureFunction kInputRms = ofInput<&Level::rms_dbfs>;
constexpr MeasureFunction kOutputRms = ofOutput<&Level::rms_dbfs>;
constexpr MeasureFunction kEcho = ofEffect<&Effect::echo_lowered_db>;
constexpr MeasureFunction kNoise = ofEffect<&Effect::noise_lowered_db>;
constexpr MeasureFunction kTalker = ofEffect<&Effect::talker_changed_db>;

MeasureRow row(const char* name, const char* unit, const char* title, Better better, size_t first_block,
               MeasureFunction whole, MeasureFunction in_second = nullptr) {
    return {{name, unit, title, better, in_second != nullptr, false}, first_block, whole, in_second};
}

MeasureRow angle(MeasureRow row) {
    row.measure.is_angle = true;
    return row;
}

}  // namespace

// Where `process --json` tells the same, a name is the path there.
const std::vector<MeasureRow>& measureRows() {
    constexpr Better kMore = Better::kMore, kLess = Better::kLess, kNeither = Better::kNeither;
    constexpr size_t kStart = 0, kConverged = kConvergedBlock;
    // clang-format off
    static const std::vector<MeasureRow> rows{
        // the recording
        row("input_rms_dbfs", "dBFS", "level of the centre microphone", kNeither, kStart, kInputRms, kInputRms),
        row("input_speech_dbfs", "dBFS", "level of speech at the centre microphone", kNeither, kStart, inputSpeech),
        row("input_pause_dbfs", "dBFS", "level of pauses at the centre microphone", kNeither, kStart,
            ofInput<&Level::pause_dbfs>),
        row("input_clipped_percent", "%", "clipped samples of the microphones", kNeither, kStart, inputClipped, inputClipped),
        row("faulty_microphones", "", "microphones that are dead or wired wrongly", kNeither, kStart, faultyMicrophones),
        row("echo_lag_ms", "ms", "delay of the echo", kNeither, kStart, echoLag, echoLagThen),
        row("echo_alone_seconds", "s", "time in which only the far end speaks", kNeither, kStart, echoAloneSeconds),
        row("echo_alone_return_loss_db", "dB", "echo below the far end", kNeither, kStart, echoReturnLoss),
        // the output
        row("output_rms_dbfs", "dBFS", "level of the output", kNeither, kStart, kOutputRms, kOutputRms),
        row("output_speech_dbfs", "dBFS", "level of speech in the output", kNeither, kStart, outputSpeech),
        row("output_pause_dbfs", "dBFS", "level of pauses in the output", kNeither, kStart, ofOutput<&Level::pause_dbfs>),
        row("output_clipped_percent", "%", "clipped samples of the output", kLess, kStart, outputClipped, outputClipped),
        row("pause_reduction_db", "dB", "pauses lowered", kMore, kStart, pauseReduction, pauseReduction),
        row("echo_alone_return_loss_enhancement_db", "dB", "echo lowered where only the far end speaks", kMore, kStart,
            echoAloneLowered, echoAloneLoweredThen),
        row("convergence_seconds", "s", "time to cancel the echo", kLess, kStart, convergence),
        row("echo_engine_delay_ms", "ms", "delay of the echo, as the engine estimates it", kNeither, kStart,
            ofEngine<&EchoEstimate::delay_ms>),
        row("echo_engine_delay_since_seconds", "s", "time at which the engine found that delay", kLess, kStart,
            ofEngine<&EchoEstimate::found_s>),
        row("echo_engine_drift_ppm", "ppm", "drift of the clocks, as the engine estimates it", kNeither, kStart,
            ofEngine<&EchoEstimate::drift_ppm>),
        angle(row("talker_mean_azimuth_degrees", "degrees", "mean direction", kNeither, kStart, azimuth, azimuth)),
        row("talker_deviation_degrees", "degrees", "unsteadiness of the direction", kNeither, kStart, deviation, deviation),
        // with the parts of a simulated recording
        row("echo_return_loss_enhancement_db", "dB", "echo lowered", kMore, kConverged, kEcho, kEcho),
        row("noise_reduction_db", "dB", "noise lowered", kMore, kConverged, kNoise, kNoise),
        row("talker_change_db", "dB", "voice changed", kNeither, kStart, kTalker, kTalker),
        row("talker_si_sdr_db", "dB", "talker over all that is not the talker", kMore, kConverged, siSdr),
        row("talker_stoi", "", "intelligibility of the talker", kMore, kConverged, intelligibility),
    };
    // clang-format on
    return rows;
}

std::optional<double> valueOf(MeasureFunction function, const Analysis& analysis, Span span) {
    const std::optional<double> value = function(analysis, span);
    if (!value || !std::isfinite(*value)) return std::nullopt;
    const double rounded = std::round(*value * kSteps) / kSteps;
    return rounded == 0 ? 0 : rounded;  // never -0
}

}  // namespace se_host
