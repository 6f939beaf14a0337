#include "tools/se_host/sound/microphone_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "common/string_printf.h"
#include "host/health/real_transform.h"
#include "tools/se_host/sound/levels.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Samples = std::vector<int16_t>;

constexpr size_t kCount = kArrayMicrophones;
constexpr size_t kFrame = 1024;
constexpr size_t kFirstBin = 200 * kFrame / kEngineSampleRate;
constexpr size_t kLastBin = 800 * kFrame / kEngineSampleRate;

constexpr double kMostApartDb = 10;  // a talker at 0.25 m makes a difference of 3 dB
constexpr double kTogether = 0.7;    // correlation from which the others hear the same sound
constexpr double kAlone = 0.5;       // share of it that is left to a microphone that hears something else

using Matrix = std::array<std::array<double, kCount>, kCount>;

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::vector<std::complex<float>> spectrumAt(const Samples& samples, size_t start, RealTransform& transform) {
    const auto begin = samples.begin() + static_cast<ptrdiff_t>(start);
    return transform.forward(std::vector<float>(begin, begin + kFrame));
}

// Sums of the products of the spectra, real part.
Matrix productsOf(const std::vector<Samples>& microphones) {
    RealTransform transform(kFrame);
    Matrix products{};
    for (size_t start = 0; start + kFrame <= microphones[0].size(); start += kFrame) {
        std::vector<std::vector<std::complex<float>>> bins;
        bins.reserve(kCount);
        for (const Samples& microphone : microphones)
            bins.push_back(spectrumAt(microphone, start, transform));
        for (size_t m = 0; m < kCount; ++m) {
            for (size_t n = 0; n < kCount; ++n) {
                for (size_t k = kFirstBin; k <= kLastBin; ++k) {
                    products[m][n] += double{(bins[m][k] * std::conj(bins[n][k])).real()};
                }
            }
        }
    }
    return products;
}

// 0 where there is silence.
Matrix correlationsOf(const std::vector<Samples>& microphones) {
    const Matrix products = productsOf(microphones);
    Matrix correlations{};
    for (size_t m = 0; m < kCount; ++m) {
        for (size_t n = 0; n < kCount; ++n) {
            const double scale = std::sqrt(products[m][m] * products[n][n]);
            if (scale > 0) correlations[m][n] = products[m][n] / scale;
        }
    }
    return correlations;
}

double correlationWithOthers(const Matrix& correlations, size_t microphone) {
    std::vector<double> with_others;
    for (size_t n = 0; n < kCount; ++n) {
        if (n != microphone) with_others.push_back(correlations[microphone][n]);
    }
    return medianOf(with_others);
}

// The median over all pairs without this microphone.
double correlationAmongOthers(const Matrix& correlations, size_t microphone) {
    std::vector<double> pairs;
    for (size_t m = 0; m < kCount; ++m) {
        for (size_t n = 0; n < m; ++n) {
            if (m != microphone && n != microphone) pairs.push_back(correlations[m][n]);
        }
    }
    return medianOf(pairs);
}

double levelOfOthers(const std::vector<double>& levels, size_t microphone) {
    std::vector<double> others = levels;
    others.erase(others.begin() + static_cast<ptrdiff_t>(microphone));
    return medianOf(others);
}

std::string nameOf(const Recording& recording, size_t microphone) {
    std::string name = stringPrintf("microphone %zu", microphone + 1);
    if (!recording.channel_map) return name;
    return name + stringPrintf(" (channel %d)", recording.channel_map->microphones[microphone]);
}

std::string levelFinding(const std::string& name, double level, double others) {
    if (level < kSilentDbfs)
        return others < kSilentDbfs ? "" : name + " is silent: it is dead or not connected";
    if (std::abs(level - others) < kMostApartDb) return {};
    return name + stringPrintf(" is %.0f dB %s than the others: check its gain and what is before it",
                               std::abs(level - others), level > others ? "louder" : "softer");
}

std::string correlationFinding(const std::string& name, double own, double others) {
    if (others < kTogether) return {};
    if (own < -kAlone * others) return name + " is inverted: its sound has the wrong sign";
    if (own > kAlone * others) return {};
    return name + stringPrintf(
                      " does not hear what the others hear (correlation %.2f, among them %.2f): it is dead, "
                      "or its channel is wired to something else",
                      own, others);
}

std::string sameFinding(const std::string& name, const std::vector<Samples>& microphones, size_t microphone,
                        const Recording& recording) {
    for (size_t other = 0; other < microphone; ++other) {
        if (microphones[other] == microphones[microphone]) {
            return name + " is the same signal as " + nameOf(recording, other) +
                   ": one of them is wired wrongly";
        }
    }
    return {};
}

}  // namespace

std::vector<MicrophoneCheck> checkMicrophones(const Recording& recording) {
    std::vector<Samples> microphones;
    std::vector<double> levels;
    for (size_t m = 0; m < kCount; ++m) {
        microphones.push_back(channelOf(recording.microphones, static_cast<int>(m) + 1));
        microphones.back().resize(recording.frames);
        levels.push_back(levelOf(microphones.back()).rms_dbfs);
    }
    const bool all_same = std::all_of(microphones.begin(), microphones.end(),
                                      [&](const Samples& samples) { return samples == microphones[0]; });
    const Matrix correlations = correlationsOf(microphones);
    std::vector<MicrophoneCheck> checks;
    for (size_t m = 0; m < kCount; ++m) {
        const std::string name = nameOf(recording, m);
        const double own = correlationWithOthers(correlations, m);
        MicrophoneCheck check{static_cast<int>(m) + 1, levels[m], own, {}};
        check.finding = levelFinding(name, levels[m], levelOfOthers(levels, m));
        if (levels[m] >= kSilentDbfs) {
            const std::string other = correlationFinding(name, own, correlationAmongOthers(correlations, m));
            if (!other.empty()) check.finding = other;
            const std::string same = sameFinding(name, microphones, m, recording);
            if (!same.empty()) check.finding = same;
        }
        if (all_same) check.finding.clear();
        checks.push_back(check);
    }
    if (all_same && levels[0] >= kSilentDbfs) {
        checks[0].finding = "all microphones have the same signal: this is no recording of an array";
    }
    return checks;
}

std::vector<std::string> findingsOf(const std::vector<MicrophoneCheck>& checks) {
    std::vector<std::string> findings;
    for (const MicrophoneCheck& check : checks) {
        if (!check.finding.empty()) findings.push_back(check.finding);
    }
    return findings;
}

}  // namespace se_host
