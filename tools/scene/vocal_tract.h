// The sound of the voice: a glottis and a noise source, filtered by resonators that glide from phone to phone.
#pragma once

#include <array>
#include <vector>

#include "tools/scene/random.h"

namespace se_scene {

struct Phone {
    double seconds = 0;
    double pitch_hz = 0;
    double voicing = 0;  // strength of the glottis, 1 in a loud vowel
    double noise = 0;    // strength of friction
    std::array<double, 3> formants_hz = {500, 1500, 2500};
    double noise_hz = 4000;
    double noise_bandwidth_hz = 2000;
};

// Two poles: Klatt, "Software for a cascade/parallel formant synthesizer" (1980).
class Resonator {
  public:
    void tune(double hertz, double bandwidth_hz);
    double operator()(double input);

  private:
    double a_ = 1;
    double b_ = 0;
    double c_ = 0;
    double last_ = 0;
    double before_ = 0;
};

class VocalTract {
  public:
    VocalTract(double fourth_formant_hz, Random& random);
    void say(const Phone& phone, std::vector<float>& samples);

  private:
    void glideTowards(const Phone& phone);
    double glottis();
    double sample();

    Random& random_;
    Phone now_;  // glides towards the phone being said
    std::array<Resonator, 5> formants_;
    Resonator friction_;
    double cycle_ = 0;        // of the glottis, 0 to 1
    double cycle_pitch_ = 1;  // jitter and shimmer of the present cycle
    double cycle_height_ = 1;
    double last_flow_ = 0;
};

}  // namespace se_scene
