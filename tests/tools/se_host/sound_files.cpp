#include "tests/tools/se_host/sound_files.h"

#include <sndfile.h>

#include <stdexcept>

namespace se_host_test {
namespace {

SNDFILE* openSound(const std::string& path, int mode, SF_INFO* info) {
    SNDFILE* const file = sf_open(path.c_str(), mode, info);
    if (file == nullptr) throw std::runtime_error(path + ": " + sf_strerror(nullptr));
    return file;
}

SF_INFO infoOf(int sample_rate, int channels, int format) {
    SF_INFO info{};
    info.samplerate = sample_rate;
    info.channels = channels;
    info.format = format;
    return info;
}

}  // namespace

Sound patternedSound(size_t frames, int channels, int sample_rate) {
    Sound sound{sample_rate, channels, {}};
    uint32_t state = 1;
    for (size_t i = 0; i < frames * static_cast<size_t>(channels); ++i) {
        state = state * 1664525u + 1013904223u;
        sound.samples.push_back(static_cast<int16_t>(static_cast<int32_t>(state >> 16) - 32768));
    }
    return sound;
}

std::vector<int16_t> channelOf(const Sound& sound, int channel) {
    std::vector<int16_t> samples;
    for (size_t frame = 0; frame < sound.frames(); ++frame) {
        samples.push_back(
            sound.samples[frame * static_cast<size_t>(sound.channels) + static_cast<size_t>(channel)]);
    }
    return samples;
}

void writeSound(const std::string& path, const Sound& sound) {
    writeSound(path, sound, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
}

void writeSound(const std::string& path, const Sound& sound, int format) {
    SF_INFO info = infoOf(sound.sample_rate, sound.channels, format);
    SNDFILE* const file = openSound(path, SFM_WRITE, &info);
    // Without this setting short samples are written to a float file unscaled.
    sf_command(file, SFC_SET_SCALE_INT_FLOAT_WRITE, nullptr, SF_TRUE);
    sf_write_short(file, sound.samples.data(), static_cast<sf_count_t>(sound.samples.size()));
    sf_close(file);
}

void writeSound(const std::string& path, const std::vector<double>& samples, int channels, int format) {
    SF_INFO info = infoOf(16000, channels, format);
    SNDFILE* const file = openSound(path, SFM_WRITE, &info);
    sf_write_double(file, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(file);
}

Sound readSound(const std::string& path) {
    SF_INFO info{};
    SNDFILE* const file = openSound(path, SFM_READ, &info);
    Sound sound{info.samplerate, info.channels, {}};
    sound.samples.resize(static_cast<size_t>(info.frames) * static_cast<size_t>(info.channels));
    sf_read_short(file, sound.samples.data(), static_cast<sf_count_t>(sound.samples.size()));
    sf_close(file);
    return sound;
}

int formatOf(const std::string& path) {
    SF_INFO info{};
    sf_close(openSound(path, SFM_READ, &info));
    return info.format;
}

}  // namespace se_host_test
