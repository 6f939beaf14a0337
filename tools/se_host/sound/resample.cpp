#include "tools/se_host/sound/resample.h"

#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "tools/output/errors.h"

namespace se_host {
namespace {

std::vector<float> convert(const AudioData& audio, size_t frames, double ratio) {
    const std::vector<float> in(audio.samples.begin(), audio.samples.end());
    std::vector<float> out(frames * static_cast<size_t>(audio.channels));

    SRC_DATA data{};
    data.data_in = in.data();
    data.input_frames = static_cast<long>(audio.frames());
    data.data_out = out.data();
    data.output_frames = static_cast<long>(frames);
    data.src_ratio = ratio;
    const int error = src_simple(&data, SRC_SINC_BEST_QUALITY, audio.channels);
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
    const std::vector<float> converted = convert(audio, frames, ratio);
    audio.samples.resize(converted.size());
    std::transform(converted.begin(), converted.end(), audio.samples.begin(), toSample);
    audio.sample_rate = sample_rate;
    return audio;
}

}  // namespace se_host
