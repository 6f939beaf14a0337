// What the host's rounding mode and its flushing of denormals change in what the hooks compute: nothing where integers
// are computed, at most one unit in the DFT.
#include <gtest/gtest.h>
#include <immintrin.h>

#include <algorithm>
#include <cfenv>
#include <cstdlib>
#include <random>
#include <vector>

#include "tests/webrtc_common/dsp/dft_objects.h"
#include "webrtc_common/se_wrapper/dsp/aec_convolution.h"
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"
#include "webrtc_common/se_wrapper/dsp/interpolate.h"
#include "webrtc_common/se_wrapper/dsp/select_kernels.h"

namespace quill::test {
namespace {

using namespace media::se_wrapper;
using Samples = std::vector<int16_t>;

constexpr unsigned kFlush = 0x8040;              // results and operands that are denormal become zero
constexpr unsigned kDenormalOrUnderflow = 0x12;  // what is noted of them

struct Mode {
    int rounding;
    unsigned flush;
};
constexpr Mode kUsual = {FE_TONEAREST, 0};

// The processor's modes during the lifetime of this object.
class ScopedMode {
  public:
    explicit ScopedMode(const Mode& mode) {
        std::fegetenv(&before_);
        std::fesetround(mode.rounding);
        _mm_setcsr((_mm_getcsr() & ~0x3fu) | mode.flush);
    }
    ~ScopedMode() { std::fesetenv(&before_); }
    ScopedMode(const ScopedMode&) = delete;
    ScopedMode& operator=(const ScopedMode&) = delete;

    static bool sawADenormal() { return (_mm_getcsr() & kDenormalOrUnderflow) != 0; }

  private:
    std::fenv_t before_;
};

Samples noise(size_t count, int peak = 32767) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> sample(-peak - 1, peak);
    Samples samples(count);
    for (int16_t& s : samples) s = static_cast<int16_t>(sample(random));
    return samples;
}

class HostModes : public testing::TestWithParam<Mode> {
  protected:
    // The kernels of this processor, as a host has them.
    void SetUp() override { selectKernels(CPUInfo()); }

    // The results of `routine` in the usual mode and in that of the test.
    template <class Routine>
    static void expectTheSame(Routine routine) {
        const auto usual = [&] {
            const ScopedMode mode(kUsual);
            return routine();
        }();
        const auto here = [&] {
            const ScopedMode mode(GetParam());
            return routine();
        }();
        EXPECT_EQ(here, usual);
    }
};

INSTANTIATE_TEST_SUITE_P(Each, HostModes,
                         testing::Values(Mode{FE_TONEAREST, kFlush}, Mode{FE_UPWARD, 0},
                                         Mode{FE_UPWARD, kFlush}, Mode{FE_DOWNWARD, 0},
                                         Mode{FE_DOWNWARD, kFlush}, Mode{FE_TOWARDZERO, 0},
                                         Mode{FE_TOWARDZERO, kFlush}),
                         [](const auto& mode) {
                             const std::string name = mode.param.rounding == FE_TONEAREST  ? "ToNearest"
                                                      : mode.param.rounding == FE_UPWARD   ? "Upward"
                                                      : mode.param.rounding == FE_DOWNWARD ? "Downward"
                                                                                           : "TowardZero";
                             return name + (mode.param.flush != 0 ? "Flushing" : "");
                         });

TEST_P(HostModes, LeaveTheConvolutionAlone) {
    Samples coeffs = noise(160), signal = noise(160 + 160 + 8);
    expectTheSame([&] {
        std::vector<int32_t> out(160);
        aecConvolution(coeffs.data(), signal.data(), out.data(), 7, 160, 160, 2);
        return out;
    });
}

TEST_P(HostModes, LeaveTheComplexProductAlone) {
    Samples a = noise(2 * 257), b = noise(2 * 257 + 1);
    expectTheSame([&] {
        Samples out(a.size());
        vcmul_i16(a.data(), b.data() + 1, out.data(), 257);
        return out;
    });
}

TEST_P(HostModes, LeaveTheInterpolationAlone) {
    Samples coeffs = noise(12 * 24), signal = noise(160 + 24 + 8);
    expectTheSame([&] {
        Samples out(12 * 160);
        int16_t* next = signal.data();
        interp1ToNCore(160, 12, &next, out.data(), coeffs.data(), 24);
        return out;
    });
}

TEST_P(HostModes, LeaveTheFilterAlone) {
    Samples coeffs = noise(55), signal = noise(3 * 160 + 64);
    for (const uint16_t step : {uint16_t{1}, uint16_t{3}}) {
        expectTheSame([&] {
            Samples out(160);
            computeRFir(signal.data(), coeffs.data(), out.data(), 54, 160, step);
            return out;
        });
    }
}

// Both transforms of blocks of noise, in a mode that is in force for the set-up of the DFT, too.
struct Transforms {
    Samples spectra;
    Samples blocks;
    bool saw_a_denormal;
};

Transforms transformed(int n, const Mode& mode) {
    const auto size = static_cast<size_t>(n);
    Transforms all{{}, {}, false};
    // Full scale, and so low that the spectrum is nearly empty.
    for (const int peak : {32767, 1000, 1}) {
        Samples block = noise(size, peak), spectrum(size + 2), usual_spectrum(size + 2), back(size);
        {
            const ScopedMode usual(kUsual);
            fwdFFT(newDftObject(n), block.data(), 0, 1024, usual_spectrum.data(),
                   static_cast<uint16_t>(n + 2));
        }
        const ScopedMode scoped(mode);
        DftObj_t* const object = newDftObject(n);
        fwdFFT(object, block.data(), 0, 1024, spectrum.data(), static_cast<uint16_t>(n + 2));
        invFFT(object, usual_spectrum.data(), 4, 1024, back.data(), 0);
        all.saw_a_denormal = all.saw_a_denormal || ScopedMode::sawADenormal();
        all.spectra.insert(all.spectra.end(), spectrum.begin(), spectrum.end());
        all.blocks.insert(all.blocks.end(), back.begin(), back.end());
    }
    return all;
}

struct Moved {
    int values = 0;
    int most = 0;

    void count(const Samples& a, const Samples& b) {
        for (size_t i = 0; i < a.size(); ++i) {
            const int distance = std::abs(a[i] - b[i]);
            values += distance != 0 ? 1 : 0;
            most = std::max(most, distance);
        }
    }
};

constexpr int kLengths[] = {6, 60, 64, 160, 256, 320, 512, 1024, 4096};

TEST_P(HostModes, MoveTheDftByAtMostOneUnit) {
    Moved moved;
    for (const int n : kLengths) {
        const Transforms usual = transformed(n, kUsual);
        const Transforms here = transformed(n, GetParam());
        moved.count(here.spectra, usual.spectra);
        moved.count(here.blocks, usual.blocks);
    }
    EXPECT_LE(moved.most, 1);
    EXPECT_EQ(moved.values > 0, GetParam().rounding != FE_TONEAREST);  // a mode that had no effect would show
}

TEST_P(HostModes, FlushNothingInTheDft) {
    for (const int n : kLengths) {
        const Transforms keeping = transformed(n, {GetParam().rounding, 0});
        const Transforms here = transformed(n, GetParam());
        EXPECT_FALSE(keeping.saw_a_denormal) << n;
        EXPECT_EQ(here.spectra, keeping.spectra) << n;
        EXPECT_EQ(here.blocks, keeping.blocks) << n;
    }
}

}  // namespace
}  // namespace quill::test
