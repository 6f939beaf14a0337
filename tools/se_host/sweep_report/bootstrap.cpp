#include "tools/se_host/sweep_report/bootstrap.h"

#include <algorithm>
#include <cstdint>

#include "tools/se_host/sweep_report/quantiles.h"

namespace se_host::report {
namespace {

// SplitMix64 (Steele, Lea, Flood: "Fast splittable pseudorandom number generators", OOPSLA 2014).
class Random {
  public:
    // Below `count`, which is less than 2^32.
    size_t below(uint64_t count) { return static_cast<size_t>(((next() >> 32) * count) >> 32); }

  private:
    uint64_t next() {
        state_ += 0x9e3779b97f4a7c15;
        uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
        return mixed ^ (mixed >> 31);
    }

    uint64_t state_ = 1;
};

}  // namespace

Interval bootstrapOfMean(const std::vector<double>& values) {
    Random random;
    std::vector<double> means;
    means.reserve(kResamples);
    for (int resample = 0; resample < kResamples; ++resample) {
        double sum = 0;
        for (size_t i = 0; i < values.size(); ++i) sum += values[random.below(values.size())];
        means.push_back(sum / static_cast<double>(values.size()));
    }
    std::sort(means.begin(), means.end());
    return {quantileOf(means, 0.025), quantileOf(means, 0.975)};
}

}  // namespace se_host::report
