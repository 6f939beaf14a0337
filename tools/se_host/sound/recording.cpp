#include "tools/se_host/sound/recording.h"

#include "host/output/errors.h"
#include "tools/se_host/sound/resample.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

using quill::media::se_wrapper::BLOCK_SIZE;

constexpr int kMinChannels = 8;

std::string quoted(const std::string& path) {
    return "'" + path + "'";
}

AudioData readMicrophones(const std::string& path, bool wired_as_device) {
    AudioData audio = readAudioFile(path);
    if (wired_as_device && audio.channels < kMinChannels) {
        throw se_output::Failure(
            quoted(path) + " has " + std::to_string(audio.channels) +
            (audio.channels == 1 ? " channel" : " channels") +
            ", but the engine needs 8 or more (microphones in channels 1 to 7); " +
            "give a recording of the microphone array; --channel-map says where other wirings have them");
    }
    return audio;
}

std::vector<int16_t> farEndOfChannel(const AudioData& input, const std::string& path, int channel) {
    if (channel < 0 || channel >= input.channels) {
        throw se_output::UsageError("--far-end-channel " + std::to_string(channel) + " does not exist; " +
                                    quoted(path) + " has the channels 0 to " +
                                    std::to_string(input.channels - 1));
    }
    return channelOf(input, channel);
}

std::optional<int> farEndChannelOf(const RecordingOptions& options, const std::optional<ChannelMap>& map) {
    if (!map || !map->far_end) return options.far_end_channel;
    if (!options.far_end_channel && options.far_end_file.empty()) return map->far_end;
    throw se_output::UsageError(
        "--channel-map names the far end, and so does another option; leave out its last number");
}

void requireFit(const AudioData& far_end, const std::string& path, const AudioData& input) {
    if (far_end.channels != 1) {
        throw se_output::Failure("far end " + quoted(path) + " has " + std::to_string(far_end.channels) +
                                 " channels; mix it down to one");
    }
    if (far_end.sample_rate != input.sample_rate) {
        throw se_output::Failure("far end " + quoted(path) + " is at " + std::to_string(far_end.sample_rate) +
                                 " Hz and the recording at " + std::to_string(input.sample_rate) +
                                 " Hz; bring both to the same rate");
    }
    if (far_end.frames() < input.frames()) {
        throw se_output::Failure("far end " + quoted(path) + " is shorter than the recording (" +
                                 std::to_string(far_end.frames()) + " of " + std::to_string(input.frames()) +
                                 " frames); pad it with silence");
    }
}

std::vector<int16_t> farEndOfFile(const std::string& path, const AudioData& input) {
    AudioData far_end = readAudioFile(path);
    requireFit(far_end, path, input);
    return resample(std::move(far_end), kEngineSampleRate).samples;
}

}  // namespace

size_t Recording::blocks() const {
    return far_end.size() / BLOCK_SIZE;
}

double Recording::seconds() const {
    return static_cast<double>(frames) / kEngineSampleRate;
}

Recording readRecording(const RecordingOptions& options) {
    Recording recording;
    if (!options.channel_map.empty()) recording.channel_map = channelMapOf(options.channel_map);
    AudioData input = readMicrophones(options.input, !recording.channel_map);
    recording.file_sample_rate = input.sample_rate;
    if (!options.far_end_file.empty()) {
        recording.far_end = farEndOfFile(options.far_end_file, input);
        recording.has_far_end = true;
    }
    input = resample(std::move(input), kEngineSampleRate);
    if (input.samples.empty()) {
        throw se_output::Failure("cannot read " + quoted(options.input) +
                                 ": it is shorter than a sample at " + std::to_string(kEngineSampleRate) +
                                 " Hz; give a longer recording");
    }
    if (const std::optional<int> channel = farEndChannelOf(options, recording.channel_map)) {
        recording.far_end = farEndOfChannel(input, options.input, *channel);
        recording.has_far_end = true;
    }
    if (recording.channel_map) input = wiredAsDevice(input, *recording.channel_map, options.input);

    recording.frames = input.frames();
    const size_t padded = (recording.frames + BLOCK_SIZE - 1) / BLOCK_SIZE * BLOCK_SIZE;
    input.samples.resize(padded * static_cast<size_t>(input.channels));
    recording.far_end.resize(padded);
    recording.microphones = std::move(input);
    return recording;
}

}  // namespace se_host
