// The routines that the engine calls through its hooks, and the de-interleaving: problems and variants.
#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "kernel_check/references/dsp.h"
#include "kernel_check/variants/functions.h"
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"
#include "webrtc_common/se_wrapper/dsp/deinterleave.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"
#include "webrtc_common/se_wrapper/dsp/interpolate.h"
#include "webrtc_common/se_wrapper/engine/saved_routines.h"

namespace quill::test {
namespace {

namespace se = media::se_wrapper;

using Vcmul = void(int16_t*, int16_t*, int16_t*, uint16_t);
using Interpolate = void(uint16_t, uint16_t, int16_t**, int16_t*, int16_t*, uint16_t);
using RFir = void(int16_t*, int16_t*, int16_t*, uint16_t, uint16_t, uint16_t);
using Deinterleave = void(const int16_t*, size_t, int16_t*);

// The engine's own routines are known only once an engine is loaded.
void engineVcmul(int16_t* a, int16_t* b, int16_t* out, uint16_t n) {
    se::vcmul_i16_SE(a, b, out, n);
}
void engineInterpolate(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out, int16_t* coeffs,
                       uint16_t num_taps) {
    se::interp1toNCore_SE(num_in, factor, signal, out, coeffs, num_taps);
}
void engineRFir(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order, uint16_t num_out,
                uint16_t step) {
    se::computeRFir_SE(signal, coeffs, out, order, num_out, step);
}

size_t inEights(int count) {
    return static_cast<size_t>((count + 7) / 8 * 8);
}

void poseVcmul(Problem& problem, Vcmul* kernel) {
    const int n = problem.draw("n", kLengths);
    const auto parts = 2 * static_cast<size_t>(n);
    int16_t* const a = problem.samples("a", parts);
    int16_t* const b = problem.samples("b", parts);
    int16_t* const out = problem.output<int16_t>("out", parts);
    problem.work(n, 4.0 * n);
    problem.call([=] { kernel(a, b, out, static_cast<uint16_t>(n)); });
}

void poseInterpolate(Problem& problem, Interpolate* kernel) {
    const int num_in = problem.draw("num_in", kLengths);
    const int factor = problem.draw("factor", {1, 2, 3, 6});
    const int num_taps = problem.draw("num_taps", kLengths);
    const size_t extent =
        num_in == 0 || num_taps == 0 ? 0 : static_cast<size_t>(num_in) + inEights(num_taps) + 7;
    int16_t* const signal = problem.samples("signal", extent);
    int16_t* const coeffs = problem.samples("coeffs", static_cast<size_t>(factor * num_taps));
    int16_t* const out = problem.output<int16_t>("out", static_cast<size_t>(num_in * factor));
    int16_t* position = signal;
    problem.work(num_in * factor, static_cast<double>(num_in) * factor * num_taps);
    problem.call([=, &position] {
        position = signal;
        kernel(static_cast<uint16_t>(num_in), static_cast<uint16_t>(factor), &position, out, coeffs,
               static_cast<uint16_t>(num_taps));
    });
    problem.result(position - signal);
}

// Scales values so that their absolute values add up to at most `limit`, and to `limit` itself where they can.
void limitAbsoluteSum(int16_t* values, size_t count, int limit) {
    const auto larger = [](int64_t sum, int16_t value) { return sum + std::abs(int{value}); };
    const int64_t sum = std::accumulate(values, values + count, int64_t{0}, larger);
    if (sum > limit) {
        for (size_t i = 0; i < count; ++i) values[i] = static_cast<int16_t>(values[i] * int64_t{limit} / sum);
    }
    int left = limit - static_cast<int>(std::accumulate(values, values + count, int64_t{0}, larger));
    for (size_t i = 0; i < count; ++i) {
        const int sign = values[i] < 0 ? -1 : 1;
        const int more = std::min(left, 32767 - std::abs(int{values[i]}));
        values[i] = static_cast<int16_t>(values[i] + sign * more);
        left -= more;
    }
}

// Multiples of eight outputs, with taps that are a multiple of eight or padded to one, and all others. The sums of
// coefficients whose absolute values add up to 65535 fit into 32 bits.
void poseRFir(Problem& problem, RFir* kernel) {
    const int order =
        problem.draw("order", {0, 1, 6, 7, 8, 9, 15, 16, 17, 23, 54, 55, 63, 159, 255, 502, 503, 504, 1100});
    const int num_out =
        problem.draw("num_out", {0, 1, 4, 5, 7, 8, 9, 15, 16, 17, 31, 55, 56, 80, 159, 160, 161, 333});
    const int step = problem.draw("step", {1, 1, 1, 0, 2, 3, 4, 5, 6, 40});
    const bool in_eights = num_out % 8 == 0 && step == 1;
    const size_t last_span = static_cast<size_t>((num_out - 1) * step + order + 1);
    const size_t extent = num_out == 0 ? 0
                          : in_eights  ? static_cast<size_t>(num_out) + inEights(order + 1)
                                       : last_span;
    int16_t* const signal = problem.samples("signal", extent);
    int16_t* const coeffs = problem.samples("coeffs", static_cast<size_t>(order) + 1);
    std::fill(coeffs, coeffs + std::min(order + 1, problem.draw("zeros in front", {0, 0, 3, 8, 17})),
              int16_t{0});
    std::fill(coeffs + std::max(0, order + 1 - problem.draw("zeros behind", {0, 0, 5, 8})),
              coeffs + order + 1, int16_t{0});
    const int limit = problem.draw("sum of coefficients", {0, 0, 65534, 65535, 65536, 65537});
    if (limit > 0) limitAbsoluteSum(coeffs, static_cast<size_t>(order) + 1, limit);
    int16_t* const out = problem.output<int16_t>("out", static_cast<size_t>(num_out));
    problem.work(num_out, static_cast<double>(num_out) * (order + 1));
    problem.call([=] {
        kernel(signal, coeffs, out, static_cast<uint16_t>(order), static_cast<uint16_t>(num_out),
               static_cast<uint16_t>(step));
    });
}

void poseDeinterleave(Problem& problem, Deinterleave* kernel) {
    const auto channels =
        static_cast<size_t>(problem.draw("channels", {8, 9, 10, 11, 12, 15, 16, 17, 31, 80}));
    const int16_t* const in = problem.samples("interleaved", (se::BLOCK_SIZE - 1) * channels + 8);
    int16_t* const rows = problem.output<int16_t>("rows", se::kNumMicrophones * se::BLOCK_SIZE);
    problem.work(se::kNumMicrophones * se::BLOCK_SIZE, 0);
    problem.call([=] { kernel(in, channels, rows); });
}

// A routine that uses the selected kernels, once with each of them.
template <class Routine>
std::vector<Variant<Routine>> overEachKernel(Routine* reference, Routine* routine, Routine* engine) {
    std::vector<Variant<Routine>> rows = {{kReference, &Machine::has_nothing_special, reference}};
    for (const se::ConvolveVariant& v : se::kConvolveVariants)
        rows.push_back({v.name, v.feature, routine, [&v] {
                            g_convolve_i16_i16 = v.i16_i16;
                            se::g_pair_kernels = &v.pairs;
                        }});
    rows.push_back({"engine", &Machine::has_engine, engine});
    return rows;
}

// A routine with several builds.
template <class Routine>
std::vector<Variant<Routine>> onEachBuild(Routine* reference, Routine* routine) {
    std::vector<Variant<Routine>> rows = {{kReference, &Machine::has_nothing_special, reference}};
    for (const se::DspVariant& v : se::kDspVariants) {
        rows.push_back({v.name, v.feature, routine, [&v] { se::g_dsp_kernels = &v; }});
    }
    return rows;
}

// `sum`: of the absolute coefficients; 0: as they are drawn.
Numbers rfirShape(int num_out, int step, int sum) {
    return {{"num_out", num_out},
            {"step", step},
            {"zeros in front", 0},
            {"zeros behind", 0},
            {"sum of coefficients", sum}};
}

std::vector<Numbers> rfirShapes() {
    std::vector<Numbers> shapes = {rfirShape(160, 1, 0)};
    for (const int sum : {0, 65535}) {
        shapes.push_back(rfirShape(159, 1, sum));
        for (const int step : {2, 3, 4}) shapes.push_back(rfirShape(80, step, sum));
    }
    return shapes;
}

Numbers rfirCase(int order, int num_out, int step, int sum = 0) {
    Numbers numbers = rfirShape(num_out, step, sum);
    numbers.insert(numbers.begin(), {"order", order});
    return numbers;
}

}  // namespace

std::vector<KernelFunction> dspFunctions() {
    std::vector<Variant<Vcmul>> vcmul = onEachBuild(referenceVcmul, se::vcmul_i16);
    vcmul.push_back({"engine", &Machine::has_engine, engineVcmul});
    return {
        kernelFunction("deinterleaveMicrophones", poseDeinterleave,
                       onEachBuild(referenceDeinterleave, se::deinterleaveMicrophones),
                       {{{"channels", 8}}, {{"channels", 10}}}),
        kernelFunction("vcmul_i16", poseVcmul, vcmul, {{{"n", 129}}, {{"n", 256}}}),
        kernelFunction("interp1ToNCore", poseInterpolate,
                       overEachKernel(referenceInterpolate, se::interp1ToNCore, engineInterpolate),
                       {{{"num_in", 80}, {"factor", 3}, {"num_taps", 24}},
                        {{"num_in", 160}, {"factor", 6}, {"num_taps", 16}}}),
        kernelFunction("computeRFir", poseRFir, overEachKernel(referenceRFir, se::computeRFir, engineRFir),
                       {rfirCase(63, 160, 1), rfirCase(54, 160, 1), rfirCase(54, 159, 1), rfirCase(54, 80, 2),
                        rfirCase(54, 80, 3), rfirCase(54, 80, 4), rfirCase(54, 80, 2, 65535),
                        rfirCase(54, 80, 3, 65535)},
                       {"order", 0, rfirShapes()}),
    };
}

}  // namespace quill::test
