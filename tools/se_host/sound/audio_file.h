// Sound files: reading any format that the sound-file library knows as 16-bit samples, writing mono and
// multichannel 16-bit WAV.
// Threads: any, one file each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/output/output_file.h"

namespace se_host {

struct AudioData {
    int sample_rate = 0;  // Hz
    int channels = 0;
    std::vector<int16_t> samples;  // interleaved

    size_t frames() const { return samples.size() / static_cast<size_t>(channels); }
    double seconds() const { return static_cast<double>(frames()) / sample_rate; }
};

// The whole file; "-" is standard input. 16-bit samples are unchanged; other formats are scaled to full scale, rounded to
// nearest and saturated.
// fails: Failure when it cannot be read, is not WAV or FLAC, is cut short,
// holds no samples, or has a sample rate below 4 or above 768 kHz.
AudioData readAudioFile(const std::string& path);

// The length that the header states, in seconds; 0: it states none. fails: Failure as readAudioFile, as far as the header tells.
double statedSeconds(const std::string& path);

// The samples as the content of the output; the caller commits. fails: Failure.
void writeWav(se_output::OutputFile& file, int sample_rate, int channels,
              const std::vector<int16_t>& samples);

// Writes a file that is complete or absent. fails: Failure.
void writeWav(const std::string& path, int sample_rate, int channels, const std::vector<int16_t>& samples);

// `subject` starts the message: the option and the channel that it names. fails: UsageError when the sound has no such channel.
void requireChannel(const std::string& subject, const AudioData& sound, const std::string& path, int channel);

// One channel of interleaved sound.
std::vector<int16_t> channelOf(const AudioData& audio, int channel);

}  // namespace se_host
