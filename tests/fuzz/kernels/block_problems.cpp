// The routines around 16-bit samples that have builds of their own, and the stand-alone filter.
#include "kernel_check/references/dsp.h"
#include "tests/fuzz/kernels/problems.h"
#include "tests/fuzz/kernels/samples.h"
#include "tests/webrtc_common/dsp/reference_filter.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"
#include "webrtc_common/se_wrapper/dsp/deinterleave.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"
#include "webrtc_common/se_wrapper/dsp/filter.h"

namespace quill::fuzz {
namespace {

namespace se = media::se_wrapper;

InputSamples g_a, g_b;
Guarded<int16_t> g_out;

template <class Compare>
size_t withEachBuild(const Compare& compare) {
    size_t builds = 0;
    for (const se::DspVariant& variant : se::kDspVariants) {
        if (!(processor().*variant.feature)) continue;
        se::g_dsp_kernels = &variant;
        compare(variant.name);
        ++builds;
    }
    return builds;
}

}  // namespace

size_t compareVcmul(Random& random) {
    const int n = random.length();
    Samples& a = g_a.draw(random, 2 * static_cast<size_t>(n));
    Samples& b = g_b.draw(random, a.size());
    const unsigned place = random.below(4);  // 0: out is a, 1: out is b
    const size_t shift = random.below(8);
    static Samples expected;
    expected.resize(a.size());
    test::referenceVcmul(a.data(), b.data(), expected.data(), static_cast<uint16_t>(n));
    return withEachBuild([&](const char* build) {
        int16_t* const pa = g_a.copy();
        int16_t* const pb = g_b.copy();
        int16_t* const out = place == 0 ? pa : place == 1 ? pb : g_out.place(expected.size(), shift);
        guardedCall([&] { se::vcmul_i16(pa, pb, out, static_cast<uint16_t>(n)); }, g_a.memory(), g_b.memory(),
                    g_out);
        requireSame(expected, out, std::string("vcmul_i16/") + build + " (" + std::to_string(n) + ")");
        if (place != 0) g_a.requireUnchanged("vcmul_i16");
        if (place != 1) g_b.requireUnchanged("vcmul_i16");
        if (place > 1) g_out.requireUntouchedMargins();
    });
}

size_t compareDeinterleave(Random& random) {
    const size_t channels = 8 + random.below(random.oneIn(8) ? 80 : 10);
    const Samples& in = g_a.draw(random, (se::BLOCK_SIZE - 1) * channels + 8);
    const size_t shift = random.below(8);
    static Samples expected;
    expected.resize(se::kNumMicrophones * se::BLOCK_SIZE);
    test::referenceDeinterleave(in.data(), channels, expected.data());
    return withEachBuild([&](const char* build) {
        const int16_t* const interleaved = g_a.copy();
        int16_t* const rows = g_out.place(expected.size(), shift);
        guardedCall([&] { se::deinterleaveMicrophones(interleaved, channels, rows); }, g_a.memory(), g_out);
        requireSame(expected, rows,
                    std::string("deinterleave/") + build + " (" + std::to_string(channels) + ")");
        g_a.requireUnchanged("deinterleave");
        g_out.requireUntouchedMargins();
    });
}

size_t compareFilter(Random& random) {
    constexpr float kGains[] = {0.0F, 0.0F, 1.0F, 1.0F, 0.5F, -1.0F, 2.0F, 1e9F, -1e30F, 1e-40F};
    const Samples coeffs = g_b.draw(random, 2 * static_cast<size_t>(random.length()) + 1);
    const se::Filter::FilterParams params = {coeffs.data(), static_cast<int32_t>(coeffs.size())};
    constexpr size_t kBlocks = 3;
    Samples blocks[kBlocks];
    float gains[kBlocks];
    for (size_t i = 0; i < kBlocks; ++i) {
        blocks[i] = g_a.draw(random, se::BLOCK_SIZE);
        gains[i] = kGains[random.below(std::size(kGains))];
    }
    size_t comparisons = 0;
    for (const se::ConvolveVariant& variant : se::kConvolveVariants) {
        if (!(processor().*variant.feature)) continue;
        g_convolve_i16_i16 = variant.i16_i16;
        se::Filter filter(params);
        test::ReferenceFilter reference(coeffs);
        for (size_t i = 0; i < kBlocks; ++i) {
            const Samples expected = reference.block(blocks[i], gains[i]);
            int16_t* const out = g_out.place(se::BLOCK_SIZE, i);
            std::copy(blocks[i].begin(), blocks[i].end(), out);
            guardedCall([&] { filter.filterBlock(out, out, gains[i]); }, g_out);
            requireSame(expected, out, std::string("Filter/") + variant.name + " block " + std::to_string(i));
            g_out.requireUntouchedMargins();
        }
        ++comparisons;
    }
    return comparisons;
}

}  // namespace quill::fuzz
