// Sound files for the tests of the command-line host, written and read without its own code.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace se_host_test {

struct Sound {
    int sample_rate = 16000;
    int channels = 8;
    std::vector<int16_t> samples;  // interleaved

    size_t frames() const { return samples.size() / static_cast<size_t>(channels); }
};

// Samples without repetition, including the extremes; the same at each call.
Sound patternedSound(size_t frames, int channels = 8, int sample_rate = 16000);

// One channel of a sound.
std::vector<int16_t> channelOf(const Sound& sound, int channel);

// `format`: a constant of the sound-file library; 16-bit WAV by default.
void writeSound(const std::string& path, const Sound& sound);
void writeSound(const std::string& path, const Sound& sound, int format);

// Full scale 1.0, for samples that 16 bits do not hold.
void writeSound(const std::string& path, const std::vector<double>& samples, int channels, int format);

Sound readSound(const std::string& path);

// Format of a file, a constant of the sound-file library.
int formatOf(const std::string& path);

}  // namespace se_host_test
