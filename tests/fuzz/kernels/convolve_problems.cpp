// The correlation kernels, and what calls them.
#include "kernel_check/references/convolve.h"
#include "kernel_check/references/dsp.h"
#include "tests/fuzz/kernels/problems.h"
#include "tests/fuzz/kernels/samples.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/dsp/aec_convolution.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"
#include "webrtc_common/se_wrapper/dsp/interpolate.h"

namespace quill::fuzz {
namespace {

namespace se = media::se_wrapper;

InputSamples g_coeffs, g_signal;
Guarded<int16_t> g_narrow;
Guarded<int32_t> g_wide;

// Runs `compare` with each build of the kernels. Returns their number.
template <class Compare>
size_t withEachBuild(const Compare& compare) {
    size_t builds = 0;
    for (const se::ConvolveVariant& variant : se::kConvolveVariants) {
        if (!(processor().*variant.feature)) continue;
        g_convolve_i16_i16 = variant.i16_i16;
        g_convolve_i16_i32 = variant.i16_i32;
        compare(variant);
        ++builds;
    }
    return builds;
}

std::string named(const char* routine, const se::ConvolveVariant& variant, int a, int b, int c) {
    return routine + (std::string("/") + variant.name) + " (" + std::to_string(a) + ", " + std::to_string(b) +
           ", " + std::to_string(c) + ")";
}

void requireUnchanged(const char* routine) {
    g_coeffs.requireUnchanged(routine);
    g_signal.requireUnchanged(routine);
}

int roundedUp(int count) {
    return (count + 7) / 8 * 8;
}

}  // namespace

size_t compareConvolveI16I16(Random& random) {
    const int num_out = random.length(), num_taps = random.length();
    const Samples& coeffs = g_coeffs.draw(random, test::wholeEights(num_taps));
    const Samples& signal = g_signal.draw(random, test::signalExtent(num_out, num_taps));
    const bool in_place = random.oneIn(4);
    const size_t shift = random.below(8);
    static Samples expected;
    expected.resize(test::wholeEights(num_out));
    test::referenceConvolve(coeffs.data(), signal.data(), expected.data(), num_out, num_taps);
    return withEachBuild([&](const se::ConvolveVariant& variant) {
        int16_t* const c = g_coeffs.copy();
        int16_t* const s = g_signal.copy();
        int16_t* const out = in_place ? s : g_narrow.place(expected.size(), shift);
        guardedCall([&] { variant.i16_i16(c, s, out, num_out, num_taps); }, g_coeffs.memory(),
                    g_signal.memory(), g_narrow);
        requireSame(expected, out, named("convolve_i16_i16", variant, num_out, num_taps, in_place));
        if (in_place) return;
        g_narrow.requireUntouchedMargins();
        requireUnchanged("convolve_i16_i16");
    });
}

size_t compareConvolveI16I32(Random& random) {
    const int num_out = random.length(), num_taps = random.length();
    const auto right = static_cast<int>(random.below(32)), left = static_cast<int>(random.below(32));
    const Samples& coeffs = g_coeffs.draw(random, test::wholeEights(num_taps));
    const Samples& signal = g_signal.draw(random, test::signalExtent(num_out, num_taps));
    const bool through_hook = random.oneIn(4);
    const size_t shift = random.below(8);
    static std::vector<int32_t> expected;
    expected.resize(test::wholeEights(num_out));
    test::referenceConvolve(coeffs.data(), signal.data(), expected.data(), right, num_out, num_taps, left);
    return withEachBuild([&](const se::ConvolveVariant& variant) {
        int16_t* const c = g_coeffs.copy();
        int16_t* const s = g_signal.copy();
        int32_t* const out = g_wide.place(expected.size(), shift);
        const auto call = [&] {
            if (through_hook) {
                se::aecConvolution(c, s, out, right, num_out, num_taps, left);
            } else {
                variant.i16_i32(c, s, out, right, num_out, num_taps, left);
            }
        };
        guardedCall(call, g_coeffs.memory(), g_signal.memory(), g_wide);
        requireSame(expected, out, named("convolve_i16_i32", variant, num_out, num_taps, right));
        g_wide.requireUntouchedMargins();
        requireUnchanged("convolve_i16_i32");
    });
}

size_t compareInterpolate(Random& random) {
    const int num_in = random.length(), num_taps = random.length();
    const auto factor = static_cast<int>(random.below(7));
    const int extent = num_in == 0 || num_taps == 0 ? 0 : num_in + roundedUp(num_taps) + 7;
    Samples& coeffs = g_coeffs.draw(random, static_cast<size_t>(factor * num_taps));
    Samples& signal = g_signal.draw(random, static_cast<size_t>(extent));
    const size_t shift = random.below(8);
    static Samples expected;
    expected.resize(static_cast<size_t>(num_in * factor));
    int16_t* position = signal.data();
    test::referenceInterpolate(static_cast<uint16_t>(num_in), static_cast<uint16_t>(factor), &position,
                               expected.data(), coeffs.data(), static_cast<uint16_t>(num_taps));
    return withEachBuild([&](const se::ConvolveVariant& variant) {
        int16_t* const c = g_coeffs.copy();
        int16_t* s = g_signal.copy();
        int16_t* const first = s;
        int16_t* const out = g_narrow.place(expected.size(), shift);
        guardedCall(
            [&] {
                se::interp1ToNCore(static_cast<uint16_t>(num_in), static_cast<uint16_t>(factor), &s, out, c,
                                   static_cast<uint16_t>(num_taps));
            },
            g_coeffs.memory(), g_signal.memory(), g_narrow);
        requireSame(expected, out, named("interp1ToNCore", variant, num_in, factor, num_taps));
        require(s == first + num_in, "interp1ToNCore moved the signal by another number");
        g_narrow.requireUntouchedMargins();
        requireUnchanged("interp1ToNCore");
    });
}

size_t compareRFir(Random& random) {
    const int order = random.length(), num_out = random.length();
    const auto step = random.oneIn(2) ? 1 : static_cast<int>(random.below(4));
    const bool in_eights = num_out % 8 == 0 && step == 1;
    const int extent = num_out == 0 ? 0
                       : in_eights  ? num_out + roundedUp(order + 1)
                                    : (num_out - 1) * step + order + 1;
    Samples& coeffs = g_coeffs.draw(random, static_cast<size_t>(order) + 1);
    const auto zeros =
        static_cast<std::ptrdiff_t>(random.oneIn(2) ? 0 : random.below(static_cast<unsigned>(order) + 2));
    std::fill(coeffs.begin(), coeffs.begin() + zeros / 2, int16_t{0});
    std::fill(coeffs.end() - (zeros - zeros / 2), coeffs.end(), int16_t{0});
    Samples& signal = g_signal.draw(random, static_cast<size_t>(extent));
    const bool in_place = step != 0 && random.oneIn(4);
    const size_t shift = random.below(8);
    static Samples expected;
    expected.resize(static_cast<size_t>(num_out));
    test::referenceRFir(signal.data(), coeffs.data(), expected.data(), static_cast<uint16_t>(order),
                        static_cast<uint16_t>(num_out), static_cast<uint16_t>(step));
    return withEachBuild([&](const se::ConvolveVariant& variant) {
        int16_t* const c = g_coeffs.copy();
        int16_t* const s = g_signal.copy();
        int16_t* const out = in_place ? s : g_narrow.place(expected.size(), shift);
        guardedCall(
            [&] {
                se::computeRFir(s, c, out, static_cast<uint16_t>(order), static_cast<uint16_t>(num_out),
                                static_cast<uint16_t>(step));
            },
            g_coeffs.memory(), g_signal.memory(), g_narrow);
        requireSame(expected, out, named("computeRFir", variant, order, num_out, step));
        if (in_place) return;
        g_narrow.requireUntouchedMargins();
        requireUnchanged("computeRFir");
    });
}

}  // namespace quill::fuzz
