// Random numbers that are the same with every compiler and library. The raw output of std::mt19937 is defined by
// the language standard; that of std::normal_distribution is not.
#pragma once

#include <complex>
#include <cstdint>
#include <random>

namespace se_scene {

// Each part of a scene has its own stream, so that it does not depend on the others.
enum class Stream : uint32_t {
    kTalker = 1,
    kFarEnd,
    kSensorNoise,
    kDiffuseNoise,
    kSecondTalker,
    kSurroundings,
    kTrial,
    kRecordedSpeech
};

class Random {
  public:
    Random(uint32_t seed, Stream stream);

    double uniform();                         // in (0, 1)
    double uniform(double low, double high);  // in (low, high)
    size_t below(size_t count);               // 0 to count - 1
    double gaussian();                        // mean 0, variance 1
    std::complex<double> complexGaussian();   // both parts independent, variance 1 each

  private:
    std::mt19937 generator_;
    double spare_ = 0;
    bool has_spare_ = false;
};

}  // namespace se_scene
