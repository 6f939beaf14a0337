#include "tools/se_host/sound/resample.h"

#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "host/output/errors.h"

namespace se_host {
namespace {

// One channel: the converter limits the number of channels that it takes at once.
std::vector<float> convert(const std::vector<int16_t>& samples, size_t frames, double ratio) {
    const std::vector<float> in(samples.begin(), samples.end());
    std::vector<float> out(frames);

    SRC_DATA data{};
    data.data_in = in.data();
    data.input_frames = static_cast<long>(in.size());
    data.data_out = out.data();
    data.output_frames = static_cast<long>(frames);
    data.src_ratio = ratio;
    const int error = src_simple(&data, SRC_SINC_BEST_QUALITY, 1);
    if (error != 0)
        throw se_output::Failure(std::string("cannot convert the sample rate: ") + src_strerror(error));
    return out;
}

int16_t toSample(float value) {
    return static_cast<int16_t>(std::lrint(std::clamp(value, -32768.0F, 32767.0F)));
}

}  // namespace

AudioData resample(AudioData audio, int sample_rate) {
    if (audio.sample_rate == sample_rate) return audio;
    const double ratio = static_cast<double>(sample_rate) / audio.sample_rate;

    // The converter may stop one frame before the exact length; the rest is silence.
    const auto frames = static_cast<size_t>(std::llround(static_cast<double>(audio.frames()) * ratio));
    AudioData converted{sample_rate, audio.channels, {}};
    const auto channels = static_cast<size_t>(audio.channels);
    converted.samples.resize(frames * channels);
    for (size_t c = 0; c < channels; ++c) {
        const std::vector<float> samples = convert(channelOf(audio, static_cast<int>(c)), frames, ratio);
        for (size_t i = 0; i < frames; ++i) converted.samples[i * channels + c] = toSample(samples[i]);
    }
    return converted;
}

}  // namespace se_host
