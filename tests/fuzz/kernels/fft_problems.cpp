// The real FFT, the hooks around it and the magnitude spectrum.
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "kernel_check/references/fft_hooks.h"
#include "kernel_check/references/published_fft.h"
#include "kernel_check/references/transforms.h"
#include "tests/fuzz/kernels/problems.h"
#include "tests/fuzz/kernels/samples.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/fft_hooks.h"
#include "webrtc_common/se_wrapper/dsp/simple_fft.h"

namespace quill::fuzz {
namespace {

namespace se = media::se_wrapper;
using fftpack::RealFftVariant;

InputSamples g_samples;
Guarded<int16_t> g_out;
Guarded<float> g_data;

template <class Compare>
size_t withEachBuild(const Compare& compare) {
    size_t builds = 0;
    for (const RealFftVariant& variant : fftpack::kRealFftVariants) {
        if (!(processor().*variant.feature)) continue;
        fftpack::g_real_fft = &variant;
        compare(variant);
        ++builds;
    }
    return builds;
}

std::string named(const char* routine, const RealFftVariant& variant, int n) {
    return routine + (std::string("/") + variant.name) + " (" + std::to_string(n) + ")";
}

// Even; mostly short, sometimes a length that engines use.
int hookLength(Random& random) {
    constexpr int kLengths[] = {128, 160, 256, 320, 480, 512, 640, 1024};
    if (random.oneIn(64)) return random.oneOf(kLengths);
    return 2 + 2 * static_cast<int>(random.below(random.oneIn(8) ? 64 : 16));
}

// An engine keeps its objects until the process ends, so there is one for each pair of lengths.
DftObj_t* objectOf(int n, int m) {
    static auto* const all = new std::map<std::pair<int, int>, DftObj_t>;
    DftObj_t& object = (*all)[{n, m}];
    if (object.context == nullptr) se::initFFT(&object, static_cast<uint16_t>(n), static_cast<uint16_t>(m));
    return &object;
}

test::RealFft& tablesOf(int n) {
    static auto* const all = new std::map<int, test::RealFft>;
    return all->try_emplace(n, n).first->second;
}

}  // namespace

size_t compareRealFft(Random& random) {
    const int n = random.oneIn(4) ? hookLength(random) : 1 + static_cast<int>(random.below(64));
    const bool forward = random.oneIn(2);
    const float unit = std::ldexp(1.0F, static_cast<int>(random.below(40)) - 20);
    test::RealFft& tables = tablesOf(n);
    const Samples& samples = g_samples.draw(random, static_cast<size_t>(n));
    const size_t shift = random.below(8);
    static std::vector<float> in, expected;
    in.resize(samples.size());
    for (size_t i = 0; i < in.size(); ++i) in[i] = static_cast<float>(samples[i]) * unit;
    expected = in;
    (forward ? test::publishedForwardFft : test::publishedBackwardFft)(n, expected.data());
    return withEachBuild([&](const RealFftVariant& variant) {
        float* const r = g_data.place(in.size(), shift);
        std::copy(in.begin(), in.end(), r);
        const auto call = [&] {
            (forward ? variant.forward : variant.backward)(n, r, tables.wsave.data(), tables.ifac.data());
        };
        guardedCall(call, g_data);
        requireSame(expected, r, named(forward ? "fdrfftf" : "fdrfftb", variant, n));
        g_data.requireUntouchedMargins();
    });
}

size_t compareFwdFft(Random& random) {
    const int n = hookLength(random);
    const int lengths[] = {n, n - 1, n / 2, 0};
    DftObj_t* const object = objectOf(n, random.oneOf(lengths));
    const auto type = static_cast<uint16_t>(random.below(5));
    const bool in_place = random.oneIn(4);
    const size_t shift = random.below(8);
    const size_t out_size = static_cast<size_t>(n) + 2;
    Samples padded = g_samples.draw(random, in_place ? out_size : static_cast<size_t>(n));
    static Samples expected;
    expected.resize(out_size);
    test::referenceFwdFft(object, padded.data(), type, 1024, expected.data(), 0);
    return withEachBuild([&](const RealFftVariant& variant) {
        int16_t* const in = g_samples.copy();
        int16_t* const out = in_place ? in : g_out.place(out_size, shift);
        guardedCall([&] { se::fwdFFT(object, in, type, 1024, out, static_cast<uint16_t>(out_size)); },
                    g_samples.memory(), g_out);
        requireSame(expected, out, named("fwdFFT", variant, n));
        g_samples.memory().requireUntouchedMargins();
        if (in_place) return;
        requireSame(padded, in, named("the padding of fwdFFT", variant, n));
        g_out.requireUntouchedMargins();
    });
}

size_t compareInvFft(Random& random) {
    constexpr int kGains[] = {1024, 1024, 0, 1, 100, 2048, 65535};
    const int n = hookLength(random);
    DftObj_t* const object = objectOf(n, n);
    const auto gain = static_cast<uint16_t>(random.oneIn(4) ? random.below(65536)
                                                            : static_cast<unsigned>(random.oneOf(kGains)));
    const bool in_place = random.oneIn(4);
    const size_t shift = random.below(8);
    Samples& in = g_samples.draw(random, static_cast<size_t>(n) + 1);  // the last of the n + 2 is not read
    static Samples expected;
    expected.resize(static_cast<size_t>(n));
    test::referenceInvFft(object, in.data(), 4, gain, expected.data(), 0);
    return withEachBuild([&](const RealFftVariant& variant) {
        int16_t* const spectrum = g_samples.copy();
        int16_t* const out = in_place ? spectrum : g_out.place(expected.size(), shift);
        uint16_t written = 0;
        guardedCall([&] { written = se::invFFT(object, spectrum, 4, gain, out, 0); }, g_samples.memory(),
                    g_out);
        requireSame(expected, out, named("invFFT", variant, n));
        require(written == n, "invFFT returned another number than its length");
        if (in_place) return;
        g_samples.requireUnchanged("invFFT");
        g_out.requireUntouchedMargins();
    });
}

size_t compareSimpleFft(Random& random) {
    const size_t n = 2 + random.below(random.oneIn(8) ? 300 : 40);
    const Samples& samples = g_samples.draw(random, n);
    static std::vector<float> bins, expected, spectrum;
    bins.resize(n);
    for (size_t i = 0; i < n; ++i) bins[i] = static_cast<float>(samples[i] / 32768.0);
    test::publishedForwardFft(static_cast<int>(n), bins.data());
    expected.assign(n / 2, bins[0]);
    for (size_t k = 1; k < n / 2; ++k) {
        const float re = bins[2 * k - 1] * bins[2 * k - 1], im = bins[2 * k] * bins[2 * k];
        const float power = re + im;
        expected[k] = static_cast<float>(std::sqrt(static_cast<double>(power)) / static_cast<double>(n / 2));
    }
    return withEachBuild([&](const RealFftVariant& variant) {
        const int16_t* const in = g_samples.copy();
        guardedCall([&] { se::simpleFFT(in, static_cast<int>(n), &spectrum); }, g_samples.memory());
        require(spectrum.size() == n / 2, "simpleFFT gave another number of bins");
        requireSame(expected, spectrum.data(), named("simpleFFT", variant, static_cast<int>(n)));
        g_samples.requireUnchanged("simpleFFT");
    });
}

}  // namespace quill::fuzz
