// A recording and a run of which everything is known, for the tests of the measures.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/se_host/measures/analysis.h"
#include "tools/se_host/measures/measures.h"

namespace se_host_test {

using Samples = std::vector<int16_t>;

inline constexpr size_t kSecond = 16000;

// 0 dBFS is a constant 32768.
double amplitudeOf(double dbfs);

Samples sine(size_t samples, double rms_dbfs, double hertz = 1000);
Samples noise(size_t samples, double rms_dbfs, unsigned seed = 1);
Samples scaled(const Samples& samples, double decibels);
Samples sum(const Samples& a, const Samples& b);
Samples delayed(const Samples& samples, size_t by);
Samples joined(const Samples& first, const Samples& then);

struct KnownRun {
    se_host::Recording recording;
    se_host::Processed processed;
    std::optional<se_host::SceneParts> parts;

    // All microphones hear `heard`; the engine looks nowhere.
    KnownRun(const Samples& heard, const Samples& output);

    void play(const Samples& far_end);
    Samples::value_type& sampleOf(int channel, size_t frame);

    se_host::Analysis analysis() const { return {recording, processed, parts}; }
    std::optional<double> value(const std::string& name) const;
    // The columns of the CSV.
    std::map<std::string, std::vector<std::string>> overTime() const;
    // One of their cells; `second` counts from 0.
    std::string cell(const std::string& name, size_t second) const;
    // The number in it; NaN when it is empty.
    double inSecond(const std::string& name, size_t second) const;
};

}  // namespace se_host_test
