#include "tests/tools/se_host/measures/known_run.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

namespace se_host_test {
namespace {

constexpr size_t kChannels = 8;

int16_t sampleOf(double value) {
    return static_cast<int16_t>(std::lround(std::clamp(value, -32768.0, 32767.0)));
}

template <typename Function>
Samples made(size_t size, Function function) {
    Samples samples;
    for (size_t i = 0; i < size; ++i) samples.push_back(sampleOf(function(i)));
    return samples;
}

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream text(line + ",");
    for (std::string cell; std::getline(text, cell, ',');) cells.push_back(cell);
    return cells;
}

}  // namespace

double amplitudeOf(double dbfs) {
    return 32768 * std::pow(10, dbfs / 20);
}

Samples sine(size_t samples, double rms_dbfs, double hertz) {
    const double peak = std::sqrt(2) * amplitudeOf(rms_dbfs);
    return made(samples, [&](size_t i) {
        return peak * std::sin(2 * M_PI * hertz * static_cast<double>(i) / kSecond);
    });
}

Samples noise(size_t samples, double rms_dbfs, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> values(0, amplitudeOf(rms_dbfs));
    return made(samples, [&](size_t) { return values(random); });
}

Samples scaled(const Samples& samples, double decibels) {
    const double gain = std::pow(10, decibels / 20);
    return made(samples.size(), [&](size_t i) { return gain * samples[i]; });
}

Samples sum(const Samples& a, const Samples& b) {
    return made(a.size(), [&](size_t i) { return double{1} * a[i] + b[i]; });
}

Samples delayed(const Samples& samples, size_t by) {
    return made(samples.size(), [&](size_t i) { return i < by ? 0 : samples[i - by]; });
}

Samples joined(const Samples& first, const Samples& then) {
    Samples both = first;
    both.insert(both.end(), then.begin(), then.end());
    return both;
}

KnownRun::KnownRun(const Samples& heard, const Samples& output) {
    recording.frames = heard.size();
    recording.file_sample_rate = kSecond;
    recording.microphones = {kSecond, kChannels, {}};
    for (const int16_t sample : heard) {
        recording.microphones.samples.push_back(0);
        recording.microphones.samples.insert(recording.microphones.samples.end(), kChannels - 1, sample);
    }
    recording.far_end.resize(heard.size());
    processed.output = output;
}

void KnownRun::play(const Samples& far_end) {
    recording.far_end = far_end;
    recording.has_far_end = true;
}

int16_t& KnownRun::sampleOf(int channel, size_t frame) {
    return recording.microphones.samples[frame * kChannels + static_cast<size_t>(channel)];
}

std::optional<double> KnownRun::value(const std::string& name) const {
    const se_host::Measured measured = se_host::measure(analysis());
    const auto& table = se_host::measures();
    for (size_t i = 0; i < table.size(); ++i) {
        if (table[i].name == name) return measured.values.at(i);
    }
    ADD_FAILURE() << "no measure " << name;
    return std::nullopt;
}

std::map<std::string, std::vector<std::string>> KnownRun::overTime() const {
    std::ostringstream text;
    se_host::writeOverTime(text, analysis());
    std::istringstream lines(text.str());
    std::string line;
    std::getline(lines, line);
    const std::vector<std::string> names = cellsOf(line);
    std::map<std::string, std::vector<std::string>> columns;
    while (std::getline(lines, line)) {
        const std::vector<std::string> cells = cellsOf(line);
        EXPECT_EQ(names.size(), cells.size());
        for (size_t i = 0; i < names.size(); ++i) columns[names[i]].push_back(cells.at(i));
    }
    return columns;
}

std::string KnownRun::cell(const std::string& name, size_t second) const {
    const auto columns = overTime();
    const auto column = columns.find(name);
    if (column == columns.end()) return "no such column";
    return second < column->second.size() ? column->second[second] : "no such row";
}

double KnownRun::inSecond(const std::string& name, size_t second) const {
    const std::string text = cell(name, second);
    return text.empty() ? std::nan("") : std::stod(text);
}

}  // namespace se_host_test
