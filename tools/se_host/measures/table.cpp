#include "tools/se_host/measures/table.h"

#include <cmath>

namespace se_host {
namespace {

constexpr double kSteps = 1e4;  // of a value, in 1

MeasureRow row(const char* name, const char* unit, const char* title, Better better, size_t first_block,
               MeasureFunction whole, MeasureFunction in_second) {
    return {{name, unit, title, better, false}, first_block, whole, in_second};
}

// One function for the whole and for a second.
MeasureRow row(const char* name, const char* unit, const char* title, Better better, size_t first_block,
               MeasureFunction function) {
    return row(name, unit, title, better, first_block, function, function);
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
        row("input_rms_dbfs", "dBFS", "level of the centre microphone", kNeither, kStart, inputRms),
        row("input_speech_dbfs", "dBFS", "level of speech at the centre microphone", kNeither, kStart, inputSpeech,
            inputSpeechThen),
        row("input_pause_dbfs", "dBFS", "level of pauses at the centre microphone", kNeither, kStart, inputPause,
            inputPauseThen),
        row("input_clipped_percent", "%", "clipped samples of the microphones", kNeither, kStart, inputClipped),
        row("faulty_microphones", "", "microphones that are dead or wired wrongly", kNeither, kStart, faultyMicrophones,
            faultyMicrophonesThen),
        row("echo_lag_ms", "ms", "delay of the echo", kNeither, kStart, echoLag, echoLagThen),
        row("echo_alone_seconds", "s", "time in which only the far end speaks", kNeither, kStart, echoAloneSeconds,
            echoAloneSecondsThen),
        row("echo_alone_return_loss_db", "dB", "echo below the far end", kNeither, kStart, echoReturnLoss, echoReturnLossThen),
        // the output
        row("output_rms_dbfs", "dBFS", "level of the output", kNeither, kStart, outputRms),
        row("output_speech_dbfs", "dBFS", "level of speech in the output", kNeither, kStart, outputSpeech, outputSpeechThen),
        row("output_pause_dbfs", "dBFS", "level of pauses in the output", kNeither, kStart, outputPause, outputPauseThen),
        row("output_clipped_percent", "%", "clipped samples of the output", kLess, kStart, outputClipped),
        row("pause_reduction_db", "dB", "pauses lowered", kMore, kStart, pauseReduction),
        row("echo_alone_return_loss_enhancement_db", "dB", "echo lowered where only the far end speaks", kMore, kStart,
            echoAloneLowered, echoAloneLoweredThen),
        row("convergence_seconds", "s", "time to cancel the echo", kLess, kStart, convergence, convergenceThen),
        row("echo_engine_delay_ms", "ms", "delay of the echo, as the engine estimates it", kNeither, kStart,
            engineDelay),
        row("echo_engine_delay_since_seconds", "s", "time at which the engine found that delay", kLess, kStart,
            engineDelaySince),
        row("echo_engine_drift_ppm", "ppm", "drift of the clocks, as the engine estimates it", kNeither, kStart,
            engineDrift),
        angle(row("talker_mean_azimuth_degrees", "degrees", "mean direction", kNeither, kStart, azimuth)),
        row("talker_deviation_degrees", "degrees", "unsteadiness of the direction", kNeither, kStart, deviation),
        // with the parts of a simulated recording
        row("echo_return_loss_enhancement_db", "dB", "echo lowered", kMore, kConverged, echoLowered, echoLoweredThen),
        row("noise_reduction_db", "dB", "noise lowered", kMore, kConverged, noiseLowered, noiseLoweredThen),
        row("talker_change_db", "dB", "voice changed", kNeither, kStart, talkerChange, talkerChangeThen),
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
