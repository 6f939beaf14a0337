#include "tools/se_host/spectrogram.h"

#include <algorithm>
#include <cmath>

#include "tools/se_host/resample.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

constexpr double kFloorDbfs = -120;
constexpr double kHannGain = 0.5;

double dbfs(double amplitude) {
    return std::max(20 * std::log10(amplitude), kFloorDbfs);
}

Moment momentAt(const int16_t* samples) {
    int16_t windowed[kSpectrumSize];
    double energy = 0;
    for (int i = 0; i < kSpectrumSize; ++i) {
        const double weight = 0.5 - 0.5 * std::cos(2 * M_PI * (i + 0.5) / kSpectrumSize);
        windowed[i] = static_cast<int16_t>(std::lround(weight * samples[i]));
        energy += static_cast<double>(samples[i]) * samples[i];
    }
    std::vector<float> spectrum;
    quill::media::se_wrapper::simpleFFT(windowed, kSpectrumSize, &spectrum);

    Moment moment;
    moment.level_dbfs = dbfs(std::sqrt(energy / kSpectrumSize) / 32768);
    moment.bins_dbfs.assign(spectrum.size(), kFloorDbfs);
    for (size_t bin = 1; bin < spectrum.size(); ++bin) {
        moment.bins_dbfs[bin] = dbfs(double{spectrum[bin]} / kHannGain);
    }
    return moment;
}

}  // namespace

std::vector<Moment> momentsOf(const std::vector<int16_t>& samples, size_t moments) {
    std::vector<Moment> result;
    if (samples.size() < kSpectrumSize) return result;
    const size_t places = samples.size() - kSpectrumSize + 1;
    const size_t step = std::max<size_t>(kSpectrumSize / 2, (places + moments - 1) / moments);
    for (size_t begin = 0; begin < places; begin += step) {
        result.push_back(momentAt(samples.data() + begin));
        result.back().seconds = (static_cast<double>(begin) + kSpectrumSize / 2.0) / kEngineSampleRate;
    }
    return result;
}

}  // namespace se_host
