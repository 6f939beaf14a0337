// Levels, clipping and microphones.
#include <algorithm>

#include "tools/se_host/measures/functions.h"
#include "tools/se_host/sound/levels.h"
#include "tools/se_host/sound/microphone_check.h"

namespace se_host {
namespace {

using Samples = std::vector<int16_t>;

constexpr size_t kLeastSecond = 50;  // blocks, to compare microphones

Samples excerpt(const Samples& samples, Span span) {
    const auto at = [&](size_t block) {
        return samples.begin() + static_cast<ptrdiff_t>(std::min(block * kBlock, samples.size()));
    };
    return {at(span.begin), at(span.end)};
}

bool isLimit(int16_t sample) {
    return sample == INT16_MIN || sample == INT16_MAX;
}

Value percent(size_t part, size_t whole) {
    if (whole == 0) return std::nullopt;
    return 100 * static_cast<double>(part) / static_cast<double>(whole);
}

Value numberOfFindings(const std::vector<MicrophoneCheck>& checks) {
    return static_cast<double>(findingsOf(checks).size());
}

// needs: whole blocks.
Recording excerpt(const Recording& recording, Span span) {
    const AudioData& all = recording.microphones;
    const auto at = [&](size_t block) {
        return all.samples.begin() +
               static_cast<ptrdiff_t>(block * kBlock * static_cast<size_t>(all.channels));
    };
    Recording part;
    part.microphones = {all.sample_rate, all.channels, {at(span.begin), at(span.end)}};
    part.frames = (span.end - span.begin) * kBlock;
    return part;
}

}  // namespace

Value inputRms(const Analysis& analysis, Span span) {
    return levelOf(excerpt(analysis.microphone, span)).rms_dbfs;
}

Value outputRms(const Analysis& analysis, Span span) {
    return levelOf(excerpt(analysis.processed.output, span)).rms_dbfs;
}

Value inputSpeech(const Analysis& analysis, Span) {
    return analysis.input.speech.whole();
}

Value inputSpeechThen(const Analysis& analysis, Span span) {
    return analysis.input.speech.within(span);
}

Value outputSpeech(const Analysis& analysis, Span) {
    return analysis.output.speech.whole();
}

Value outputSpeechThen(const Analysis& analysis, Span span) {
    return analysis.output.speech.within(span);
}

Value inputPause(const Analysis& analysis, Span) {
    return levelOf(analysis.microphone).pause_dbfs;
}

Value inputPauseThen(const Analysis& analysis, Span span) {
    return analysis.input.pauses.within(span);
}

Value outputPause(const Analysis& analysis, Span) {
    return levelOf(analysis.processed.output).pause_dbfs;
}

Value outputPauseThen(const Analysis& analysis, Span span) {
    return analysis.output.pauses.within(span);
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
    return numberOfFindings(checkMicrophones(analysis.recording));
}

Value faultyMicrophonesThen(const Analysis& analysis, Span span) {
    span.end = std::min(span.end, analysis.recording.frames / kBlock);
    if (span.end < span.begin + kLeastSecond) return std::nullopt;
    const std::vector<MicrophoneCheck> checks = checkMicrophones(excerpt(analysis.recording, span));
    const auto is_silent = [](const MicrophoneCheck& check) { return check.level_dbfs < kSilentDbfs; };
    if (std::all_of(checks.begin(), checks.end(), is_silent)) return std::nullopt;
    return numberOfFindings(checks);
}

}  // namespace se_host
