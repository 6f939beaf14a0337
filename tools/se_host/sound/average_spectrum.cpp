#include "tools/se_host/sound/average_spectrum.h"

#include <algorithm>
#include <cmath>

#include "tools/se_host/sound/windowed_spectrum.h"

namespace se_host {
Spectrum averageSpectrum(const std::vector<int16_t>& samples, int sample_rate, int size) {
    const std::vector<double> window = hannWindow(static_cast<size_t>(size));
    std::vector<double> power(window.size() / 2);
    Spectrum spectrum;
    for (size_t first = 0; first + window.size() <= samples.size(); first += window.size() / 2) {
        const std::vector<double> piece = amplitudes(samples.data() + first, window);
        for (size_t bin = 0; bin < power.size(); ++bin) power[bin] += piece[bin] * piece[bin];
        ++spectrum.pieces;
    }
    spectrum.hertz_per_bin = static_cast<double>(sample_rate) / size;
    for (const double sum : power) {
        spectrum.dbfs.push_back(10 * std::log10(sum / static_cast<double>(spectrum.pieces)));
    }
    return spectrum;
}

std::vector<size_t> peaksOf(const Spectrum& spectrum, size_t count) {
    const std::vector<double>& level = spectrum.dbfs;
    std::vector<size_t> peaks;
    for (size_t bin = 1; bin + 1 < level.size(); ++bin) {
        if (level[bin] > level[bin - 1] && level[bin] >= level[bin + 1]) peaks.push_back(bin);
    }
    std::sort(peaks.begin(), peaks.end(), [&](size_t a, size_t b) { return level[a] > level[b]; });
    peaks.resize(std::min(peaks.size(), count));
    return peaks;
}

}  // namespace se_host
