#include "reference_engine/audio/diffuseness.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/audio/geometry.h"
#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.9f;  // a block
constexpr float kTiny = 1e-3f;   // against division by zero; samples are integers

constexpr double kLeastSpread =
    1e-11;  // of the microphones along an axis, square seconds: they may stand in a line

// The background is the least length of the last seconds: 0.02 in the noise of a room, up to 0.1 between many talkers.
constexpr float kLeastBackground = 0.015f;
constexpr float kMostBackground = 0.09f;
constexpr float kFall = 0.15f;   // of the difference, a block
constexpr float kRise = 1.004f;  // a block: twice as much after 1.7 s

// Lengths of the direction's vector, in those of the background.
constexpr float kNoDirection = 1.5f;
constexpr float kOneDirection = 5.0f;

}  // namespace

// A wave from direction u reaches microphone m earlier by the product of u and the microphone's position, in seconds: u is the
// least-squares solution.
void Diffuseness::init() {
    *this = Diffuseness{};
    background_ = kMostBackground;
    double xx = kLeastSpread, xy = 0, yy = kLeastSpread;
    for (int m = 0; m < kMicrophones; ++m) {
        const double x = leadOf(m, 0), y = leadOf(m, M_PI / 2);
        xx += x * x;
        xy += x * y;
        yy += y * y;
    }
    const double determinant = xx * yy - xy * xy;
    for (int m = 0; m < kMicrophones; ++m) {
        const double x = leadOf(m, 0), y = leadOf(m, M_PI / 2);
        to_x_[m] = static_cast<float>((yy * x - xy * y) / determinant);
        to_y_[m] = static_cast<float>((xx * y - xy * x) / determinant);
    }
    for (int k = kFirstBin; k < kLastBin; ++k) {
        per_radian_[k] = static_cast<float>(MicrophoneSpectra::kFrame / (2 * M_PI * k * kSampleRate));
    }
}

FOR_WIDE_REGISTERS void Diffuseness::update(const MicrophoneSpectra& spectra) {
    Lanes leads = {};
    float energy = 0;
    for (int k = kFirstBin; k < kLastBin; ++k) {
        const LaneBin& bin = spectra.bin(k);
        const float re = bin.re[0], im = bin.im[0];
        leads += per_radian_[k] * (re * bin.im - im * bin.re);
        energy += re * re + im * im;
    }
    leads_ = kMemory * leads_ + (1 - kMemory) * leads;
    for (int lane = 0; lane < kLanes; ++lane) leads_[lane] = flushed(leads_[lane]);
    energy_ = flushed(kMemory * energy_ + (1 - kMemory) * energy);
    float x = 0, y = 0;
    for (int m = 0; m < kMicrophones; ++m) {
        x += to_x_[m] * leads_[m];
        y += to_y_[m] * leads_[m];
    }
    const float length = std::sqrt(x * x + y * y) / (energy_ + kTiny);
    background_ = length < background_ ? background_ + kFall * (length - background_) : background_ * kRise;
    background_ = std::clamp(background_, kLeastBackground, kMostBackground);
    const float above = (length / background_ - kNoDirection) / (kOneDirection - kNoDirection);
    value_ = 1 - std::clamp(above, 0.0f, 1.0f);
}

}  // namespace reference_engine
