#include "tools/se_host/sound/windowed_spectrum.h"

#include <cmath>

#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

constexpr double kMeanOfWindow = 0.5;

}  // namespace

std::vector<double> hannWindow(size_t size) {
    std::vector<double> window(size);
    for (size_t i = 0; i < size; ++i) {
        window[i] = 0.5 - 0.5 * std::cos(2 * M_PI * static_cast<double>(i) / static_cast<double>(size));
    }
    return window;
}

std::vector<double> amplitudes(const int16_t* samples, const std::vector<double>& window) {
    const size_t size = window.size();
    std::vector<int16_t> windowed(size);
    for (size_t i = 0; i < size; ++i) {
        windowed[i] = static_cast<int16_t>(std::lround(samples[i] * window[i]));
    }
    std::vector<float> bins;
    quill::media::se_wrapper::simpleFFT(windowed.data(), static_cast<int>(size), &bins);
    std::vector<double> result(bins.begin(), bins.end());
    result[0] = std::abs(result[0]) / static_cast<double>(size);  // bin 0 is a plain sum
    for (double& amplitude : result) amplitude /= kMeanOfWindow;
    return result;
}

}  // namespace se_host
