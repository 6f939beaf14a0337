#include "tools/se_host/sound/audio_file.h"

#include <sndfile.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <memory>

#include "tools/output/errors.h"

namespace se_host {
namespace {

struct SoundFileCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, SoundFileCloser>;

[[noreturn]] void cannotRead(const std::string& path, const std::string& why) {
    throw se_output::Failure("cannot read '" + path + "': " + why);
}

void refuseWhatIsNoFile(const std::string& path) {
    std::error_code error;
    if (::access(path.c_str(), R_OK) != 0) cannotRead(path, std::strerror(errno));
    if (std::filesystem::is_directory(path, error))
        cannotRead(path, "it is a folder; give a WAV or FLAC file");
    if (std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) == 0) {
        cannotRead(path, "the file is empty; give a WAV or FLAC file");
    }
}

SoundFile openToRead(const std::string& path, SF_INFO* info) {
    refuseWhatIsNoFile(path);
    SoundFile file(sf_open(path.c_str(), SFM_READ, info));
    if (!file) cannotRead(path, "not a sound file that can be decoded; give a WAV or FLAC file");
    return file;
}

// A double holds every sample of 8 to 32 bits exactly, so that 16-bit files are unchanged.
int16_t toSample(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int16_t>(std::lrint(std::clamp(value * 32768.0, -32768.0, 32767.0)));
}

}  // namespace

AudioData readAudioFile(const std::string& path) {
    SF_INFO info{};
    const SoundFile file = openToRead(path, &info);
    AudioData audio{info.samplerate, info.channels, {}};

    // In pieces until the end, because the length in a damaged header is not reliable.
    constexpr sf_count_t kFrames = 4096;
    std::vector<double> piece(static_cast<size_t>(kFrames) * static_cast<size_t>(info.channels));
    while (const sf_count_t frames = sf_readf_double(file.get(), piece.data(), kFrames)) {
        const auto end = piece.begin() + static_cast<std::ptrdiff_t>(frames) * info.channels;
        std::transform(piece.begin(), end, std::back_inserter(audio.samples), toSample);
    }
    if (sf_error(file.get()) != SF_ERR_NO_ERROR) cannotRead(path, sf_strerror(file.get()));
    if (audio.samples.empty()) cannotRead(path, "it holds no samples; give a recording");
    return audio;
}

void writeWav(const se_output::TemporaryFile& output, int sample_rate, int channels,
              const std::vector<int16_t>& samples) {
    SF_INFO info{};
    info.samplerate = sample_rate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SoundFile file(sf_open(output.name().c_str(), SFM_WRITE, &info));
    if (!file) throw se_output::Failure("cannot write '" + output.path() + "': " + sf_strerror(nullptr));

    const auto count = static_cast<sf_count_t>(samples.size());
    const bool written = sf_write_short(file.get(), samples.data(), count) == count;
    if (!written || sf_close(file.release()) != 0) {
        throw se_output::Failure("cannot write '" + output.path() +
                                 "': the samples did not fit; is there space left?");
    }
}

void writeWav(const std::string& path, int sample_rate, int channels, const std::vector<int16_t>& samples) {
    se_output::TemporaryFile file(path);
    writeWav(file, sample_rate, channels, samples);
    file.commit();
}

std::vector<int16_t> channelOf(const AudioData& audio, int channel) {
    std::vector<int16_t> samples(audio.frames());
    const auto stride = static_cast<size_t>(audio.channels);
    for (size_t frame = 0; frame < samples.size(); ++frame) {
        samples[frame] = audio.samples[frame * stride + static_cast<size_t>(channel)];
    }
    return samples;
}

}  // namespace se_host
