#include "tools/se_host/sound/spectrogram.h"

#include <algorithm>
#include <cmath>

#include "tools/se_host/sound/resample.h"
#include "tools/se_host/sound/windowed_spectrum.h"

namespace se_host {
namespace {

constexpr double kFloorDbfs = -120;

double dbfs(double amplitude) {
    return std::max(20 * std::log10(amplitude), kFloorDbfs);
}

Moment momentAt(const int16_t* samples, const std::vector<double>& window) {
    double energy = 0;
    for (int i = 0; i < kSpectrumSize; ++i) energy += static_cast<double>(samples[i]) * samples[i];

    Moment moment;
    moment.level_dbfs = dbfs(std::sqrt(energy / kSpectrumSize) / 32768);
    for (const double amplitude : amplitudes(samples, window)) moment.bins_dbfs.push_back(dbfs(amplitude));
    return moment;
}

}  // namespace

std::vector<Moment> momentsOf(const std::vector<int16_t>& samples, size_t moments) {
    std::vector<Moment> result;
    if (samples.size() < kSpectrumSize) return result;
    const std::vector<double> window = hannWindow(kSpectrumSize);
    const size_t places = samples.size() - kSpectrumSize + 1;
    const size_t step = std::max<size_t>(kSpectrumSize / 2, (places + moments - 1) / moments);
    for (size_t begin = 0; begin < places; begin += step) {
        result.push_back(momentAt(samples.data() + begin, window));
        result.back().seconds = (static_cast<double>(begin) + kSpectrumSize / 2.0) / kEngineSampleRate;
    }
    return result;
}

}  // namespace se_host
