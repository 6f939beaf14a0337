// The correlation kernels: problems and variants.
#include "kernel_check/references/convolve.h"
#include "kernel_check/variants/functions.h"
#include "webrtc_common/se_wrapper/engine/saved_routines.h"

namespace quill::test {
namespace {

using media::se_wrapper::aecConvolution_SE;
using media::se_wrapper::ConvolveVariant;
using media::se_wrapper::kConvolveVariants;

constexpr int kShifts[] = {0, 1, 2, 5, 9, 14, 15, 16, 30, 31};

void engineI16I32(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right, int num_out,
                  int num_taps, int shift_left) {
    aecConvolution_SE(const_cast<int16_t*>(coeffs), const_cast<int16_t*>(signal), out, shift_right, num_out,
                      num_taps, shift_left);
}

// Beside the lengths of all kernels: groups of outputs and sets of taps of every build, whole and not.
constexpr int kOutputs[] = {0, 1, 7, 8, 13, 16, 17, 24, 40, 55, 56, 72, 80, 96, 128, 152, 160, 176, 256, 320};
constexpr int kTaps[] = {0,  1,  5,  8,  9,  15, 16, 17,  24,  31,  32,  33,  40,
                         55, 56, 63, 64, 65, 72, 96, 104, 128, 136, 160, 256, 512};

struct Lengths {
    explicit Lengths(Problem& problem)
        : num_out(problem.draw("num_out", kOutputs)), num_taps(problem.draw("num_taps", kTaps)) {
        problem.work(num_out, static_cast<double>(num_out) * num_taps);
    }
    const int num_out, num_taps;
};

const std::vector<Numbers> kTimedCases = {
    {{"num_out", 160}, {"num_taps", 16}},  {{"num_out", 160}, {"num_taps", 64}},
    {{"num_out", 160}, {"num_taps", 512}}, {{"num_out", 80}, {"num_taps", 24}},
    {{"num_out", 56}, {"num_taps", 64}},
};

const std::vector<Numbers> kSweptShapes = {{{"num_out", 160}}, {{"num_out", 80}}};

std::vector<Numbers> shifted(std::vector<Numbers> cases) {
    for (Numbers& numbers : cases) {
        numbers.emplace_back("shift_right", 15);
        numbers.emplace_back("shift_left", 0);
    }
    return cases;
}

}  // namespace

void poseConvolveI16I16(Problem& problem, ConvolveI16I16* kernel) {
    const Lengths n(problem);
    const int16_t* const coeffs = problem.samples("coeffs", wholeEights(n.num_taps));
    const int16_t* const signal = problem.samples("signal", signalExtent(n.num_out, n.num_taps));
    int16_t* const out = problem.output<int16_t>("out", wholeEights(n.num_out));
    problem.call([=] { kernel(coeffs, signal, out, n.num_out, n.num_taps); });
}

void poseConvolveI16I32(Problem& problem, ConvolveI16I32* kernel) {
    const Lengths n(problem);
    const int shift_right = problem.draw("shift_right", kShifts);
    const int shift_left = problem.draw("shift_left", kShifts);
    const int16_t* const coeffs = problem.samples("coeffs", wholeEights(n.num_taps));
    const int16_t* const signal = problem.samples("signal", signalExtent(n.num_out, n.num_taps));
    int32_t* const out = problem.output<int32_t>("out", wholeEights(n.num_out));
    problem.call([=] { kernel(coeffs, signal, out, shift_right, n.num_out, n.num_taps, shift_left); });
}

std::vector<KernelFunction> convolveFunctions() {
    std::vector<Variant<ConvolveI16I16>> narrowed = {
        {kReference, &Machine::has_nothing_special, referenceConvolve},
    };
    std::vector<Variant<ConvolveI16I32>> scaled = {
        {kReference, &Machine::has_nothing_special, referenceConvolve},
    };
    for (const ConvolveVariant& v : kConvolveVariants) {
        narrowed.push_back({v.name, v.feature, v.i16_i16});
        scaled.push_back({v.name, v.feature, v.i16_i32});
    }
    scaled.push_back({"engine", &Machine::has_engine, engineI16I32});
    return {
        kernelFunction("convolve_i16_i16", poseConvolveI16I16, narrowed, kTimedCases,
                       {"num_taps", 1, kSweptShapes}),
        kernelFunction("convolve_i16_i32", poseConvolveI16I32, scaled, shifted(kTimedCases),
                       {"num_taps", 1, shifted(kSweptShapes)}),
    };
}

}  // namespace quill::test
