#include "tools/se_host/sound/audio_file.h"

#include <sndfile.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <string_view>

#include "host/output/errors.h"
#include "host/output/input_file.h"
#include "tools/se_host/sound/wav_length.h"

namespace se_host {
namespace {

struct SoundFileCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, SoundFileCloser>;

using se_output::cannotRead;

constexpr const char* kAdvice = "give a WAV or FLAC file";

// Of the formats that are read; FLAC may follow a tag.
bool isBeginningOfSound(std::string_view beginning) {
    constexpr std::string_view kBeginnings[] = {"RIFF", "RIFX", "RF64", "fLaC", "ID3"};
    return std::any_of(std::begin(kBeginnings), std::end(kBeginnings),
                       [&](std::string_view one) { return beginning.substr(0, one.size()) == one; });
}

// A stream longer than this has no header that states its length.
constexpr se_output::InputKind kSound{kAdvice, size_t{4} << 30, isBeginningOfSound};

constexpr int kLowestRate = 4000;  // Hz
constexpr int kHighestRate = 768000;

std::string nameOf(int format) {
    SF_FORMAT_INFO info{};
    info.format = format;
    const bool is_known = sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof(info)) == 0;
    return is_known && info.name != nullptr ? info.name : "another format";
}

void refuseOtherFormats(const std::string& path, const SF_INFO& info) {
    const int format = info.format & SF_FORMAT_TYPEMASK;
    for (const int known : {SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_RF64, SF_FORMAT_FLAC}) {
        if (format == known) return;
    }
    cannotRead(path, "it is " + nameOf(format) + "; convert it to WAV or FLAC");
}

void refuseOtherRates(const std::string& path, const SF_INFO& info) {
    if (info.samplerate >= kLowestRate && info.samplerate <= kHighestRate) return;
    cannotRead(path, "its sample rate is " + std::to_string(info.samplerate) + " Hz; give a sound of " +
                         std::to_string(kLowestRate) + " to " + std::to_string(kHighestRate) + " Hz");
}

void refuseWhatIsCutShort(const std::string& path, int descriptor) {
    struct stat status {};
    const auto end = statedEndOfWav(descriptor);
    if (!end || ::fstat(descriptor, &status) != 0) return;
    const auto size = static_cast<uint64_t>(status.st_size);
    if (*end <= size) return;
    cannotRead(path,
               "it is cut short, " + std::to_string(*end - size) + " bytes are missing; give the whole file");
}

SoundFile openToRead(int descriptor, const std::string& path, SF_INFO* info) {
    SoundFile file(sf_open_fd(descriptor, SFM_READ, info, SF_FALSE));
    if (!file) cannotRead(path, "not a sound file that can be decoded; give a WAV or FLAC file");
    refuseOtherFormats(path, *info);
    refuseOtherRates(path, *info);
    refuseWhatIsCutShort(path, descriptor);
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
    const se_output::Descriptor content = se_output::openInput(path, kSound);
    const SoundFile file = openToRead(content.number(), path, &info);
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

double statedSeconds(const std::string& path) {
    SF_INFO info{};
    const se_output::Descriptor content = se_output::openInput(path, kSound);
    openToRead(content.number(), path, &info);
    return info.frames == SF_COUNT_MAX ? 0 : static_cast<double>(info.frames) / info.samplerate;
}

void writeWav(se_output::OutputFile& output, int sample_rate, int channels,
              const std::vector<int16_t>& samples) {
    SF_INFO info{};
    info.samplerate = sample_rate;
    info.channels = channels;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SoundFile file(sf_open_fd(output.descriptor(), SFM_WRITE, &info, SF_FALSE));
    if (!file) throw se_output::Failure("cannot write '" + output.path() + "': " + sf_strerror(nullptr));

    const auto count = static_cast<sf_count_t>(samples.size());
    const bool written = sf_write_short(file.get(), samples.data(), count) == count;
    if (!written || sf_close(file.release()) != 0) {
        throw se_output::Failure("cannot write '" + output.path() +
                                 "': the samples did not fit; is there space left?");
    }
}

void writeWav(const std::string& path, int sample_rate, int channels, const std::vector<int16_t>& samples) {
    se_output::OutputFile file(path);
    writeWav(file, sample_rate, channels, samples);
    file.commit();
}

void requireChannel(const std::string& subject, const AudioData& sound, const std::string& path,
                    int channel) {
    if (channel < sound.channels) return;
    throw se_output::UsageError(subject + " does not exist; '" + path + "' has the channels 0 to " +
                                std::to_string(sound.channels - 1));
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
