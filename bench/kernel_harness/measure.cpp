#include "bench/kernel_harness/measure.h"

#include <algorithm>
#include <vector>

#include "tools/core_clock/core_clock.h"

namespace kernel_harness {
namespace {

constexpr int kRounds = 201;
constexpr double kRoundSeconds = 60e-6;

double fastestTenth(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + kRounds / 10, values.end());
    return values[kRounds / 10];
}

// Rounds of calls, each between two looks at the core's clock. A round is so short that the clock seldom
// changes within it. A look that was interrupted would make the calls seem fast, so the faster clock counts.
class TimedRounds : public quill::test::CallRunner {
  public:
    bool timed() const override { return true; }
    void run(void (*repeat)(const void* call, size_t times), const void* call) override {
        const size_t times = timesPerRound(repeat, call);
        std::vector<double> cycles, seconds;
        for (int round = 0; round < kRounds; ++round) {
            const double before = core_clock::secondsPerCycle();
            const double begin = core_clock::now();
            repeat(call, times);
            const double each = (core_clock::now() - begin) / static_cast<double>(times);
            const double after = core_clock::secondsPerCycle();
            seconds.push_back(each);
            cycles.push_back(each / std::min(before, after));
        }
        measurement.cycles = fastestTenth(cycles);
        measurement.nanoseconds = 1e9 * fastestTenth(seconds);
    }
    Measurement measurement;

  private:
    // Warms up, too.
    static size_t timesPerRound(void (*repeat)(const void* call, size_t times), const void* call) {
        for (size_t times = 1;; times *= 2) {
            const double begin = core_clock::now();
            repeat(call, times);
            if (core_clock::now() - begin >= kRoundSeconds) return times;
        }
    }
};

}  // namespace

Measurement measure(const quill::test::KernelVariant& variant, const quill::test::Numbers& numbers,
                    uint32_t seed) {
    TimedRounds rounds;
    quill::test::Problem problem(seed, numbers, rounds);
    variant.run(problem);
    rounds.measurement.samples = problem.work_samples;
    rounds.measurement.multiply_adds = problem.work_multiply_adds;
    return rounds.measurement;
}

}  // namespace kernel_harness
