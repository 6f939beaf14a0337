#include "bench/engine_vs_peer/voice_files.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <numeric>

#include "common/string_printf.h"
#include "host/output/errors.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;
using se_output::Failure;
using se_scene::Row;

namespace fs = std::filesystem;

constexpr size_t kPiece = se_scene::kSampleRate / 50;
constexpr double kSilence = 1e-4;       // in power, of the loudest piece
constexpr double kSilentPower = 1e-10;  // of full scale

struct Closer {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

[[noreturn]] void cannotRead(const fs::path& path, const std::string& why) {
    throw Failure("cannot read " + path.string() + ": " + why);
}

Row readMono(const fs::path& path) {
    SF_INFO info{};
    const std::unique_ptr<SNDFILE, Closer> file(sf_open(path.c_str(), SFM_READ, &info));
    if (!file) cannotRead(path, "it is not a WAV file");
    if (info.samplerate != se_scene::kSampleRate || info.channels != 1) {
        cannotRead(path, stringPrintf("it has %d Hz and %d channels; convert it to %d Hz, mono",
                                      info.samplerate, info.channels, se_scene::kSampleRate));
    }
    Row samples(static_cast<size_t>(info.frames));
    samples.resize(static_cast<size_t>(sf_read_float(file.get(), samples.data(), info.frames)));
    return samples;
}

void removeOffset(Row& row) {
    const double mean = std::accumulate(row.begin(), row.end(), 0.0) / static_cast<double>(row.size());
    for (float& sample : row) sample = static_cast<float>(static_cast<double>(sample) - mean);
}

// From the first piece that is no silence to the last.
Row withoutSilence(const Row& row) {
    std::vector<double> powers;
    for (size_t at = 0; at + kPiece <= row.size(); at += kPiece) {
        const auto begin = row.begin() + static_cast<ptrdiff_t>(at);
        powers.push_back(se_scene::powerOf(Row(begin, begin + kPiece)));
    }
    if (powers.empty()) return {};
    const double loudest = *std::max_element(powers.begin(), powers.end());
    const double least = std::max(kSilentPower, kSilence * loudest);
    const auto sounds = [least](double power) { return power >= least; };
    const auto first = std::find_if(powers.begin(), powers.end(), sounds) - powers.begin();
    const auto last = std::find_if(powers.rbegin(), powers.rend(), sounds).base() - powers.begin();
    if (first >= last) return {};
    constexpr auto kStep = static_cast<ptrdiff_t>(kPiece);
    return {row.begin() + first * kStep, row.begin() + last * kStep};
}

Row readUtterance(const fs::path& path) {
    Row row = readMono(path);
    if (!std::all_of(row.begin(), row.end(), [](float sample) { return std::isfinite(sample); }))
        cannotRead(path, "a sample is not a number");
    if (!row.empty()) removeOffset(row);
    row = withoutSilence(row);
    if (row.empty()) cannotRead(path, "it is silent; remove it");
    return row;
}

std::vector<fs::path> sortedEntries(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> paths;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        paths.push_back(entry->path());
    if (error) cannotRead(folder, error.message());
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace

RecordedTalkers readTalkers(const std::string& folder) {
    RecordedTalkers talkers;
    for (const fs::path& path : sortedEntries(folder)) {
        if (!fs::is_directory(path)) continue;
        RecordedTalker talker{path.filename(), {}};
        for (const fs::path& file : sortedEntries(path)) {
            if (file.extension() == ".wav") talker.utterances.push_back(readUtterance(file));
        }
        if (talker.utterances.empty()) cannotRead(path, "it has no *.wav; each folder is a talker");
        talkers.push_back(std::move(talker));
    }
    if (talkers.size() < kFewestTalkers) {
        cannotRead(folder,
                   stringPrintf("it has %zu talkers, at least %zu are needed; each is a folder of WAV files",
                                talkers.size(), kFewestTalkers));
    }
    return talkers;
}

}  // namespace engine_vs_peer
