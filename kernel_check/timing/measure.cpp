#include "kernel_check/timing/measure.h"

namespace timing {
namespace {

class TimedCall : public quill::test::CallRunner {
  public:
    explicit TimedCall(const Rounds& rounds) : rounds_(rounds) {}
    bool timed() const override { return true; }
    void run(void (*repeat)(const void* call, size_t times), const void* call) override {
        timing = timeInTurn({[=](size_t times) { repeat(call, times); }}, rounds_).front();
    }
    Timing timing;

  private:
    const Rounds& rounds_;
};

}  // namespace

Measurement measure(const quill::test::FunctionVariant& variant, const quill::test::Numbers& numbers,
                    uint32_t seed, const Rounds& rounds) {
    TimedCall timed(rounds);
    quill::test::Problem problem(seed, numbers, timed);
    variant.run(problem);
    return {timed.timing.cycles, timed.timing.nanoseconds, problem.work_samples, problem.work_multiply_adds};
}

}  // namespace timing
