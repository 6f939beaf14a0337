#include "reference_engine/audio/residual_echo.h"

#include <cmath>

namespace reference_engine {
namespace {

// Mean square of the analysis window over each block of the frame: the errors themselves are not windowed.
constexpr float kWeights[] = {0.293f, 0.914f, 0.293f};

}  // namespace

void ResidualEcho::init() {
    *this = ResidualEcho{};
    // The DFT divides by its size, and also halves the first and the last bin.
    constexpr double kDftPower = 1.0 / kSpectralSize / kSpectralSize;
    for (int k = 0; k < kSpectralBins; ++k) {
        const double cosine = std::cos(2 * M_PI * k / kSpectralSize);
        const double emphasis = 1 + double{kEmphasis} * kEmphasis - 2 * kEmphasis * cosine;
        factor_[k] = static_cast<float>(kDftPower * emphasis);
    }
    factor_[0] /= 4;
    factor_[kSpectralBins - 1] /= 4;
}

void ResidualEcho::update(const float (&left)[kEchoBins]) {
    for (int k = 0; k < kSpectralBins; ++k) {
        left_[0][k] = left_[1][k];
        left_[1][k] = left_[2][k];
        left_[2][k] = left[k];
        const float sum = kWeights[0] * left_[0][k] + kWeights[1] * left_[1][k] + kWeights[2] * left_[2][k];
        power_[k] = factor_[k] * sum;
    }
}

}  // namespace reference_engine
