#include "kernel_check/harness/sweep.h"

#include <algorithm>

#include "kernel_check/timing/measure.h"

namespace kernel_harness {
namespace {

constexpr int kFirstTaps = 16, kLastTaps = 512;
constexpr int kPasses = 4, kRetries = 12;
constexpr double kDoubtful = 0.85;  // a lower share may be the other load's, so these are measured again
constexpr timing::Rounds kRounds = {41, 40e-6};

void improve(Sweep& sweep, const quill::test::Numbers& shape, std::size_t variant, std::size_t index,
             uint32_t seed) {
    const auto& [name, first_number, shapes] = sweep.function->sweep;
    quill::test::Numbers numbers = shape;
    numbers.emplace_back(name, first_number + sweep.taps[index] - 1);
    const timing::Measurement m = timing::measure(*sweep.variants[variant], numbers, seed, kRounds);
    double& best = sweep.per_cycle[variant][index];
    best = std::max(best, m.multiply_adds / m.cycles);
}

Sweep sweepShape(const KernelFunction& function, const std::vector<const FunctionVariant*>& variants,
                 const quill::test::Numbers& shape, int step, uint32_t seed) {
    Sweep sweep{described(shape), &function, variants, {}, {}};
    for (int taps = kFirstTaps; taps <= kLastTaps; taps += step) sweep.taps.push_back(taps);
    sweep.per_cycle.assign(variants.size(), std::vector<double>(sweep.taps.size()));
    for (int pass = 0; pass < kPasses + kRetries; ++pass) {
        for (std::size_t t = 0; t < sweep.taps.size(); ++t) {
            for (std::size_t v = 0; v < variants.size(); ++v) {
                if (pass < kPasses || sweep.share(v, t) < kDoubtful) improve(sweep, shape, v, t, seed);
            }
        }
    }
    return sweep;
}

std::vector<const FunctionVariant*> variantsOf(const KernelFunction& function,
                                               const std::vector<Selected>& rows) {
    std::vector<const FunctionVariant*> variants;
    for (const Selected& row : rows) {
        const bool ours = row.variant != &function.reference() && row.variant->needs != &Machine::has_engine;
        if (row.function == &function && row.runs && ours) variants.push_back(row.variant);
    }
    return variants;
}

}  // namespace

double Sweep::share(std::size_t variant, std::size_t index) const {
    const std::vector<double>& speeds = per_cycle[variant];
    double better = index > 0 ? speeds[index - 1] : 0;
    if (index + 1 < speeds.size()) better = std::max(better, speeds[index + 1]);
    return speeds[index] / better;
}

std::vector<Sweep> sweepTaps(const std::vector<Selected>& rows, int step, uint32_t seed) {
    std::vector<Sweep> sweeps;
    const KernelFunction* last = nullptr;
    for (const Selected& row : rows) {
        if (row.function == last) continue;
        last = row.function;
        const std::vector<const FunctionVariant*> variants = variantsOf(*last, rows);
        if (variants.empty()) continue;
        for (const auto& shape : last->sweep.shapes) {
            sweeps.push_back(sweepShape(*last, variants, shape, step, seed));
        }
    }
    return sweeps;
}

}  // namespace kernel_harness
