// The real FFT and the hooks around it: problems and variants.
#include <map>
#include <memory>

#include "kernel_check/references/fft_hooks.h"
#include "kernel_check/references/published_fft.h"
#include "kernel_check/references/transforms.h"
#include "kernel_check/variants/functions.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/fft_hooks.h"

namespace quill::test {
namespace {

namespace se = media::se_wrapper;

using Transform = fftpack::RealFft;
using FwdFft = void(DftObj_t*, int16_t*, uint16_t, uint16_t, int16_t*, uint16_t);
using InvFft = uint16_t(DftObj_t*, int16_t*, uint16_t, uint16_t, int16_t*, uint16_t);

// Every radix, combinations of them, lengths that engines use, and a prime.
constexpr int kTransformLengths[] = {1,   2,   3,   4,   5,   6,   7,   8,   9,   10,  12, 15,
                                     16,  20,  24,  25,  30,  32,  60,  64,  77,  80,  97, 120,
                                     128, 160, 240, 256, 300, 320, 480, 512, 640, 1024};
constexpr int kHookLengths[] = {2,  4,  6,  8,   10, 12, 14,  16,  18,  20,  24,  26,  30,  32,
                                48, 54, 70, 128, 60, 64, 160, 256, 320, 480, 512, 640, 1024};
constexpr int kJudgedLength = 160;  // the exact transform takes n^2

const RealFft& setUp(int n) {
    static std::map<int, RealFft> all;
    return all.try_emplace(n, n).first->second;
}

// Objects as an engine keeps them: until the process ends, and reachable, so that a leak checker does not report them.
DftObj_t* objectOf(int n, int m) {
    static auto* const all = new std::map<std::pair<int, int>, DftObj_t>;
    DftObj_t& object = (*all)[{n, m}];
    if (object.context == nullptr) se::initFFT(&object, static_cast<uint16_t>(n), static_cast<uint16_t>(m));
    return &object;
}

template <class Direct>
void poseTransform(Problem& problem, Transform* transform, Direct* direct) {
    const int n = problem.draw("n", kTransformLengths);
    const RealFft& tables = setUp(n);
    float* const r = problem.floats("r", static_cast<size_t>(n), fillWithSampleValues);
    float* const wsave = problem.scratch("wsave", tables.wsave);
    int* const ifac = problem.scratch("ifac", std::vector<int>(tables.ifac.begin(), tables.ifac.end()));
    const Floats in(r, r + n);
    problem.work(n, 0);
    problem.call([=] { transform(n, r, wsave, ifac); });
    problem.judge([=] {
        if (n > kJudgedLength) return std::string();
        const double bound = errorFactor(tables.ifac) * kEpsilon * std::sqrt(n) * norm(in);
        const double error = largestDifference(Floats(r, r + n), direct(in));
        return error <= bound
                   ? ""
                   : "an error of " + std::to_string(error) + " with a bound of " + std::to_string(bound);
    });
}

void poseForward(Problem& problem, Transform* transform) {
    poseTransform(problem, transform, directForward);
}

void poseBackward(Problem& problem, Transform* transform) {
    poseTransform(problem, transform, directBackward);
}

void poseFwdFft(Problem& problem, FwdFft* kernel) {
    const int n = problem.draw("n", kHookLengths);
    const int padding = problem.draw("padding", {0, 1, n / 3, n});
    const int dft_type = problem.draw("dft_type", {0, 1, 2, 3});
    DftObj_t* const object = objectOf(n, n - padding);
    int16_t* const in = problem.samples("in", static_cast<size_t>(n));
    int16_t* const out = problem.output<int16_t>("out", static_cast<size_t>(n) + 2);
    problem.work(n, 0);
    problem.call([=] {
        kernel(object, in, static_cast<uint16_t>(dft_type), 1024, out, static_cast<uint16_t>(n + 2));
    });
}

void poseInvFft(Problem& problem, InvFft* kernel) {
    const int n = problem.draw("n", kHookLengths);
    const int scale = problem.draw("scale_factor_q10", {1024, 1024, 100, 0, 1, 2048, 65535});
    DftObj_t* const object = objectOf(n, n - problem.draw("padding", {0, 1, n / 3, n}));
    int16_t* const in = problem.samples("in", static_cast<size_t>(n) + 1);
    int16_t* const out = problem.output<int16_t>("out", static_cast<size_t>(n));
    int written = 0;
    problem.work(n, 0);
    problem.call([=, &written] { written = kernel(object, in, 4, static_cast<uint16_t>(scale), out, 0); });
    problem.result(written);
}

std::vector<Numbers> forEachLength(const Numbers& others = {}) {
    std::vector<Numbers> cases;
    for (const int n : {256, 320, 512, 640, 1024}) {
        cases.push_back(others);
        cases.back().emplace_back("n", n);
    }
    return cases;
}

void publishedForward(int n, float* r, float* /*wsave*/, const int* /*ifac*/) {
    publishedForwardFft(n, r);
}
void publishedBackward(int n, float* r, float* /*wsave*/, const int* /*ifac*/) {
    publishedBackwardFft(n, r);
}

// The published transform and every build of ours.
std::vector<Variant<Transform>> builds(Transform* published, Transform* fftpack::RealFftVariant::*transform) {
    std::vector<Variant<Transform>> all = {{"published", &Machine::has_nothing_special, published}};
    for (const fftpack::RealFftVariant& v : fftpack::kRealFftVariants) {
        all.push_back({v.name, v.feature, v.*transform});
    }
    return all;
}

// A hook with every build.
template <class Hook>
std::vector<Variant<Hook>> onBuilds(Hook* reference, Hook* hook) {
    std::vector<Variant<Hook>> all = {{kReference, &Machine::has_nothing_special, reference}};
    for (const fftpack::RealFftVariant& v : fftpack::kRealFftVariants) {
        all.push_back({v.name, v.feature, hook, [&v] { fftpack::g_real_fft = &v; }});
    }
    return all;
}

}  // namespace

std::vector<KernelFunction> fftFunctions() {
    return {
        // The published transform is checked against the direct one.
        kernelFunction("fdrfftf", poseForward, builds(publishedForward, &fftpack::RealFftVariant::forward),
                       forEachLength()),
        kernelFunction("fdrfftb", poseBackward, builds(publishedBackward, &fftpack::RealFftVariant::backward),
                       forEachLength()),
        kernelFunction("fwdFFT", poseFwdFft, onBuilds(referenceFwdFft, se::fwdFFT),
                       forEachLength({{"padding", 0}, {"dft_type", 0}})),
        kernelFunction("invFFT", poseInvFft, onBuilds(referenceInvFft, se::invFFT),
                       forEachLength({{"scale_factor_q10", 1024}, {"padding", 0}})),
    };
}

}  // namespace quill::test
