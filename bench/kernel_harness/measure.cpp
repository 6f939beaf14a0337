#include "bench/kernel_harness/measure.h"

#include "bench/measure/rounds.h"

namespace kernel_harness {
namespace {

class TimedCall : public quill::test::CallRunner {
  public:
    bool timed() const override { return true; }
    void run(void (*repeat)(const void* call, size_t times), const void* call) override {
        timing = bench::timeInTurn({[=](size_t times) { repeat(call, times); }}).front();
    }
    bench::Timing timing;
};

}  // namespace

Measurement measure(const quill::test::KernelVariant& variant, const quill::test::Numbers& numbers,
                    uint32_t seed) {
    TimedCall timed;
    quill::test::Problem problem(seed, numbers, timed);
    variant.run(problem);
    return {timed.timing.cycles, timed.timing.nanoseconds, problem.work_samples, problem.work_multiply_adds};
}

}  // namespace kernel_harness
