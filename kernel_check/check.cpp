#include "kernel_check/check.h"

#include <optional>

#include "kernel_check/problem/fault_trap.h"

namespace quill::test {
namespace {

// Makes the call once, with pages without access around the buffers.
class OnceOnGuardedPages : public CallRunner {
  public:
    bool timed() const override { return false; }
    void run(void (*repeat)(const void* call, size_t times), const void* call) override {
        const Once once{repeat, call};
        fault = trapFault(
            [](const void* argument) {
                const Once& o = *static_cast<const Once*>(argument);
                o.repeat(o.call, 1);
            },
            &once);
    }
    std::optional<Fault> fault;

  private:
    struct Once {
        void (*repeat)(const void* call, size_t times);
        const void* call;
    };
};

std::string accessText(const Problem& problem, const Fault& fault) {
    return (fault.write ? "writes " : "reads ") + problem.whereIs(fault.address);
}

}  // namespace

std::string fault(const KernelFunction& function, const FunctionVariant& variant, uint32_t seed,
                  const Numbers& given) {
    OnceOnGuardedPages runner;
    Problem problem(seed, given, runner);
    variant.run(problem);
    std::string text;
    if (runner.fault) {
        text = accessText(problem, *runner.fault);
    } else if (&variant == &function.reference()) {
        text = problem.verdict();
    } else {
        OnceOnGuardedPages reference_runner;
        Problem reference(seed, given, reference_runner);
        function.reference().run(reference);
        text = reference_runner.fault ? "the reference " + accessText(reference, *reference_runner.fault)
                                      : problem.difference(reference);
    }
    if (!text.empty()) text += "\n  with " + problem.description() + "; seed " + std::to_string(seed);
    return text;
}

Failure firstFault(const KernelFunction& function, const FunctionVariant& variant, uint32_t seed,
                   int repeat) {
    for (int i = 0; i < repeat; ++i) {
        const uint32_t problem_seed = seed + static_cast<uint32_t>(i);
        if (std::string text = fault(function, variant, problem_seed); !text.empty()) {
            return {problem_seed, std::move(text)};
        }
    }
    return {seed, {}};
}

}  // namespace quill::test
