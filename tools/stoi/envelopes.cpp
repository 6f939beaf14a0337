#include "tools/stoi/envelopes.h"

#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "tools/scene/fft.h"

namespace stoi {
namespace {

constexpr double kSampleRate = 10000;
constexpr size_t kFrame = 256;
constexpr size_t kHop = kFrame / 2;
constexpr size_t kTransform = 512;
constexpr double kLowestBandHz = 150;  // its centre
constexpr double kRangeDb = 40;

// Hann, without the zeros at its ends.
const std::array<double, kFrame> kWindow = [] {
    std::array<double, kFrame> window;
    for (size_t i = 0; i < kFrame; ++i) {
        window[i] = 0.5 - 0.5 * std::cos(2 * M_PI * static_cast<double>(i + 1) / (kFrame + 1));
    }
    return window;
}();

size_t framesIn(const Signal& signal) {
    return signal.size() < kFrame ? 0 : (signal.size() - kFrame) / kHop + 1;
}

double sample(const Signal& signal, size_t frame, size_t i) {
    return kWindow[i] * static_cast<double>(signal[frame * kHop + i]);
}

double energyDb(const Signal& signal, size_t frame) {
    double energy = 0;
    for (size_t i = 0; i < kFrame; ++i) energy += sample(signal, frame, i) * sample(signal, frame, i);
    return 10 * std::log10(energy);
}

Signal joined(const Signal& signal, const std::vector<size_t>& frames) {
    Signal result(frames.empty() ? 0 : (frames.size() - 1) * kHop + kFrame);
    for (size_t k = 0; k < frames.size(); ++k) {
        for (size_t i = 0; i < kFrame; ++i) {
            result[k * kHop + i] += static_cast<float>(sample(signal, frames[k], i));
        }
    }
    return result;
}

size_t binOf(double hertz) {
    return static_cast<size_t>(std::lround(hertz * kTransform / kSampleRate));
}

}  // namespace

Signal atTenKilohertz(const Signal& signal, double sample_rate) {
    const double ratio = kSampleRate / sample_rate;
    if (ratio == 1 || signal.empty()) return signal;
    Signal result(static_cast<size_t>(std::ceil(static_cast<double>(signal.size()) * ratio)));
    SRC_DATA data{};
    data.data_in = signal.data();
    data.data_out = result.data();
    data.input_frames = static_cast<long>(signal.size());
    data.output_frames = static_cast<long>(result.size());
    data.src_ratio = ratio;
    const int error = src_simple(&data, SRC_SINC_BEST_QUALITY, 1);
    if (error != 0) throw std::invalid_argument(std::string("cannot resample: ") + src_strerror(error));
    result.resize(static_cast<size_t>(data.output_frames_gen));
    return result;
}

void removePauses(Signal& clean, Signal& processed) {
    std::vector<double> energies;
    for (size_t k = 0; k < framesIn(clean); ++k) energies.push_back(energyDb(clean, k));
    if (energies.empty()) return;
    const double threshold = *std::max_element(energies.begin(), energies.end()) - kRangeDb;
    std::vector<size_t> loud;
    for (size_t k = 0; k < energies.size(); ++k) {
        if (energies[k] > threshold) loud.push_back(k);
    }
    clean = joined(clean, loud);
    processed = joined(processed, loud);
}

Envelopes envelopesOf(const Signal& signal) {
    const se_scene::Fft fft(kTransform);
    Envelopes envelopes(framesIn(signal));
    for (size_t k = 0; k < envelopes.size(); ++k) {
        se_scene::Spectrum spectrum(kTransform);
        for (size_t i = 0; i < kFrame; ++i) spectrum[i] = sample(signal, k, i);
        fft.forward(spectrum);
        for (size_t band = 0; band < kBands; ++band) {
            const double centre = kLowestBandHz * std::exp2(static_cast<double>(band) / 3);
            double energy = 0;
            for (size_t bin = binOf(centre * std::exp2(-1.0 / 6)); bin < binOf(centre * std::exp2(1.0 / 6));
                 ++bin) {
                energy += std::norm(spectrum[bin]);
            }
            envelopes[k][band] = std::sqrt(energy);
        }
    }
    return envelopes;
}

}  // namespace stoi
