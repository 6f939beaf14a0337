#include "tools/se_host/commands/summary.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "common/string_printf.h"
#include "tools/se_host/commands/text_lines.h"
#include "tools/se_host/engine/cycle_split_output.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

using quill::stringPrintf;

constexpr double kLeastConfidence = 0.02;  // of a direction that was searched for
constexpr double kLeastShare = 0.05;       // of a direction that is worth a word

std::string engineText(const Summary& summary) {
    std::string text = summary.build + " (" + summary.version + ")";
    return summary.bypass ? text + ", bypassed: the output is channel 7" : text;
}

std::string soundText(const Summary& summary) {
    std::string text =
        stringPrintf("%.2f s, %d channels, %zu blocks", summary.seconds, summary.channels, summary.blocks);
    if (summary.file_sample_rate == kEngineSampleRate) return text;
    return text + stringPrintf(", resampled from %d to %d Hz", summary.file_sample_rate, kEngineSampleRate);
}

std::string inAndOutText(const Summary& summary, double Level::*dbfs) {
    return levelText(summary.input_levels[size_t{kCentreMicrophone}].*dbfs) + " at the centre microphone, " +
           levelText(summary.output_level.*dbfs) + " in the output";
}

std::string talkerText(const Summary& summary) {
    if (!summary.talker) return "no direction found";
    return stringPrintf("at %d degrees (location %d) in %.0f %% of the blocks, confidence %.2f",
                        summary.talker->azimuth_degrees, summary.talker->location,
                        100 * summary.talker->share, summary.talker->confidence);
}

std::string speedText(const Summary& summary, double processing_seconds) {
    const double factor = summary.realTimeFactor(processing_seconds);
    return stringPrintf("%.2f s, %.0f times as fast as spoken (real-time factor %.4f)", processing_seconds,
                        1 / factor, factor);
}

std::string timesText(const BlockTimes& times) {
    constexpr double kMicroseconds = 1e6;
    return stringPrintf("; a block %.0f us, 99 %% of them within %.0f, the longest %.0f",
                        times.mean * kMicroseconds, times.percentile_99 * kMicroseconds,
                        times.longest * kMicroseconds);
}

// Empty while there is one direction, which the talker's line has.
std::string sharesText(const Summary& summary) {
    std::string text;
    size_t directions = 0;
    for (const LocationShare& share : locationShares(summary.directions)) {
        if (share.share < kLeastShare || share.confidence < kLeastConfidence) continue;
        text += stringPrintf("%s%d degrees %.0f %%", directions++ == 0 ? "" : ", ", share.azimuth_degrees,
                             100 * share.share);
    }
    return directions > 1 ? text + " of the time" : std::string();
}

std::string echoAloneText(const EchoAlone& echo) {
    const std::string where = stringPrintf("in the %.1f s in which only the far end speaks", echo.seconds);
    return echo.lowered_db ? stringPrintf("lowered by %.1f dB ", *echo.lowered_db) + where
                           : "too little to measure " + where;
}

std::string differenceText(const Comparison& comparison) {
    if (comparison.largest_difference == 0) return "the same output";
    return stringPrintf("the output differs by at most %d (%.0f dB below it)", comparison.largest_difference,
                        -comparison.difference_db);
}

std::string comparisonText(const Summary& summary) {
    return "the engine's own: " + speedText(summary, summary.engine_routines->processing_seconds) + "; " +
           differenceText(*summary.engine_routines);
}

std::string cyclesText(const Summary& summary) {
    const CycleShares* own = nullptr;
    if (summary.engine_routines && summary.engine_routines->cycles) own = &*summary.engine_routines->cycles;
    return toText(*summary.cycles, own);
}

std::string loweredText(const std::optional<double>& db, const char* when, const char* never) {
    return db ? stringPrintf("lowered by %.1f dB %s", *db, when) : std::string(never);
}

std::string effectText(const Effect& effect) {
    return labelledLine("echo",
                        loweredText(effect.echo_lowered_db, "while nobody speaks", "none to measure")) +
           labelledLine("noise",
                        loweredText(effect.noise_lowered_db, "in pauses", "no pause to measure it in")) +
           labelledLine("voice", effect.talker_changed_db
                                     ? stringPrintf("changed by %+.1f dB", *effect.talker_changed_db)
                                     : std::string("never without echo"));
}

}  // namespace

Comparison compare(const std::vector<int16_t>& output, const std::vector<int16_t>& other) {
    Comparison comparison{};
    double power = 0, difference_power = 0;
    for (size_t i = 0; i < output.size(); ++i) {
        const int difference = output[i] - other[i];
        comparison.largest_difference = std::max(comparison.largest_difference, std::abs(difference));
        difference_power += static_cast<double>(difference) * difference;
        power += static_cast<double>(output[i]) * output[i];
    }
    comparison.difference_db = 10 * std::log10(difference_power / power);
    return comparison;
}

std::string toText(const Summary& summary) {
    std::string text = summary.input + " -> " + summary.output + "\n";
    text += labelledLine("engine", engineText(summary));
    text += labelledLine("sound", soundText(summary));
    text += labelledLine("far end", summary.far_end.empty() ? "none" : summary.far_end);
    text += labelledLine("level", inAndOutText(summary, &Level::rms_dbfs));
    text += labelledLine("pauses", inAndOutText(summary, &Level::pause_dbfs));
    if (!summary.bypass) text += labelledLine("talker", talkerText(summary));
    if (const std::string shares = sharesText(summary); !shares.empty())
        text += labelledLine("looks at", shares);
    if (summary.effect) {
        text += effectText(*summary.effect);
    } else if (summary.call.echo) {
        text += labelledLine("echo", echoAloneText(*summary.call.echo));
    }
    if (const std::string path = echoPathText(summary.call); !path.empty())
        text += labelledLine("path", path);
    text +=
        labelledLine("took", speedText(summary, summary.processing_seconds) + timesText(summary.block_times));
    if (summary.engine_routines) text += labelledLine("routines", comparisonText(summary));
    if (summary.cycles) text += cyclesText(summary);
    for (const std::string& finding : summary.call.findings) text += labelledLine("note", finding);
    return text;
}

}  // namespace se_host
