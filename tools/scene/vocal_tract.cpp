#include "tools/scene/vocal_tract.h"

#include <cmath>

#include "tools/scene/scene.h"

namespace se_scene {

namespace {

constexpr int kGlideStep = 8;  // samples between changes of the filters
constexpr double kGlideSeconds = 0.015;
constexpr double kOnsetSeconds = 0.005;
constexpr double kBandwidthsHz[] = {70, 100, 150, 220, 300};

// Share of the way to go in `steps` samples.
double glide(double seconds, int steps) {
    return 1 - std::exp(-steps / (seconds * kSampleRate));
}

// Flow through the glottis over one cycle: it opens slowly, closes fast and stays closed (Rosenberg 1971).
double flowAt(double cycle) {
    constexpr double kOpening = 0.40;
    constexpr double kClosing = 0.16;
    if (cycle < kOpening) return 0.5 - 0.5 * std::cos(M_PI * cycle / kOpening);
    if (cycle < kOpening + kClosing) return std::cos(M_PI / 2 * (cycle - kOpening) / kClosing);
    return 0;
}

}  // namespace

void Resonator::tune(double hertz, double bandwidth_hz) {
    c_ = -std::exp(-2 * M_PI * bandwidth_hz / kSampleRate);
    b_ = 2 * std::exp(-M_PI * bandwidth_hz / kSampleRate) * std::cos(2 * M_PI * hertz / kSampleRate);
    a_ = 1 - b_ - c_;
}

double Resonator::operator()(double input) {
    const double output = a_ * input + b_ * last_ + c_ * before_;
    before_ = last_;
    last_ = output;
    return output;
}

VocalTract::VocalTract(double fourth_formant_hz, Random& random) : random_(random) {
    formants_[3].tune(fourth_formant_hz, kBandwidthsHz[3]);
    formants_[4].tune(fourth_formant_hz + 1100, kBandwidthsHz[4]);
}

void VocalTract::say(const Phone& phone, std::vector<float>& samples) {
    if (now_.pitch_hz <= 0) now_.pitch_hz = phone.pitch_hz;
    now_.noise_hz = phone.noise_hz;
    now_.noise_bandwidth_hz = phone.noise_bandwidth_hz;
    friction_.tune(now_.noise_hz, now_.noise_bandwidth_hz);
    const auto count = static_cast<int>(phone.seconds * kSampleRate);
    for (int i = 0; i < count; ++i) {
        if (i % kGlideStep == 0) glideTowards(phone);
        samples.push_back(static_cast<float>(sample()));
    }
}

void VocalTract::glideTowards(const Phone& phone) {
    static const double slow = glide(kGlideSeconds, kGlideStep);
    static const double fast = glide(kOnsetSeconds, kGlideStep);
    now_.pitch_hz += slow * (phone.pitch_hz - now_.pitch_hz);
    now_.voicing += fast * (phone.voicing - now_.voicing);
    now_.noise += fast * (phone.noise - now_.noise);
    for (size_t f = 0; f < now_.formants_hz.size(); ++f) {
        now_.formants_hz[f] += slow * (phone.formants_hz[f] - now_.formants_hz[f]);
        formants_[f].tune(now_.formants_hz[f], kBandwidthsHz[f]);
    }
}

// The lips radiate the change of the flow from sample to sample.
double VocalTract::glottis() {
    cycle_ += cycle_pitch_ * now_.pitch_hz / kSampleRate;
    if (cycle_ >= 1) {
        cycle_ -= 1;
        cycle_pitch_ = 1 + 0.01 * random_.gaussian();
        cycle_height_ = 1 + 0.04 * random_.gaussian();
    }
    const double flow = cycle_height_ * flowAt(cycle_);
    const double change = flow - last_flow_;
    last_flow_ = flow;
    return change + 0.01 * flow * random_.gaussian();  // breath, while the glottis is open
}

double VocalTract::sample() {
    double voiced = now_.voicing * glottis();
    for (Resonator& formant : formants_) voiced = formant(voiced);
    return voiced + now_.noise * friction_(random_.gaussian());
}

}  // namespace se_scene
