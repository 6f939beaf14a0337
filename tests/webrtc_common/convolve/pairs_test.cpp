// The exact filters in every build: what they compute, and that they touch nothing else.
#include "webrtc_common/convolve/pairs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <random>
#include <vector>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"
#include "tests/webrtc_common/convolve/each_build.h"
#include "tests/webrtc_common/upper_halves.h"

namespace quill::test {
namespace {

using media::se_wrapper::kMostPairOutputs;
using media::se_wrapper::kMostPairTaps;
using media::se_wrapper::PairTotals;
using Samples = std::vector<int16_t>;

// On buffers that end where the filter has to stop.
struct Problem {
    Problem(int taps_, int count_, int step_, const Filler& samples = kUniform)
        : taps(taps_),
          count(count_),
          step(static_cast<size_t>(step_)),
          signal(static_cast<size_t>(count - 1) * step + static_cast<size_t>(taps)),
          coeffs(static_cast<size_t>(taps)) {
        std::mt19937 random(5);
        samples.fill(signal.data(), signal.size(), random);
        kUniform.fill(coeffs.data(), coeffs.size(), random);
    }
    int64_t sum(int i) const {
        int64_t total = 0;
        const int16_t* const from = signal.data() + static_cast<size_t>(i) * step;
        for (int k = 0; k < taps; ++k) total += int64_t{coeffs[static_cast<size_t>(k)]} * from[k];
        return total;
    }
    int16_t output(int i) const {
        return static_cast<int16_t>(std::clamp<int64_t>((sum(i) + 16384) >> 15, -32768, 32767));
    }

    int taps, count;
    size_t step;
    GuardedBuffer<int16_t> signal, coeffs;
};

class Pairs : public EachBuild {
  protected:
    const media::se_wrapper::PairKernels& kernels() const { return GetParam().pairs; }
    void expectExact(const Problem& p) const {
        const GuardedBuffer<int16_t> out(static_cast<size_t>(p.count));
        kernels().filter(p.signal.data(), p.step, p.coeffs.data(), p.taps, p.count, out.data());
        for (int i = 0; i < p.count; ++i) {
            ASSERT_EQ(out[static_cast<size_t>(i)], p.output(i))
                << i << " of " << p.count << ", " << p.taps << " taps, step " << p.step;
        }
    }
};
INSTANTIATE_FOR_EACH_BUILD(Pairs);

TEST_P(Pairs, AreFilteredExactlyForEveryNumberOfTaps) {
    for (int taps = 1; taps <= 60; ++taps) {
        for (const int step : {1, 2, 3, 4, 5, 6, 7, 17, 600}) expectExact({taps, 37, step});
    }
}

TEST_P(Pairs, AreFilteredExactlyForEveryNumberOfOutputs) {
    for (int count = 1; count <= kMostPairOutputs; ++count) {
        for (const int step : {1, 2, 3, 4, 5, 6, 7}) {
            expectExact({8, count, step});
            expectExact({11, count, step});
        }
    }
}

TEST_P(Pairs, AreFilteredExactlyWithTheMostTaps) {
    for (const int taps : {kMostPairTaps - 1, kMostPairTaps}) {
        for (const int step : {1, 2, 3, 4, 6, 251, 252, 253, 504, 65535}) {
            for (const Filler& filler : kFillers) expectExact({taps, 18, step, filler});
        }
    }
}

// Up to 65535, the sum of the taps' absolute values, 32 bits hold every sum. With 65536 those of samples of -32768 by
// negative taps do not.
TEST_P(Pairs, AreFilteredExactlyOnBothSidesOfTheLimitOf32Bits) {
    for (const int sum : {65534, 65535, 65536, 65537}) {
        for (const int sign : {-1, 1}) {
            for (const int step : {1, 2, 3, 4, 5}) {
                for (const Filler& filler : kFillers) {
                    Problem p(19, 37, step, filler);
                    for (int k = 0; k < p.taps; ++k)
                        p.coeffs[static_cast<size_t>(k)] = static_cast<int16_t>(sign * (sum / p.taps));
                    p.coeffs[static_cast<size_t>(sum % p.taps)] +=
                        static_cast<int16_t>(sign * (sum % p.taps));
                    expectExact(p);
                }
            }
        }
    }
}

TEST_P(Pairs, AddUpToTotals) {
    for (const int divisor : {1, 1000}) {  // both ways of adding
        for (const int step : {1, 2, 3, 4, 5}) {
            for (const Filler& filler : kFillers) {
                Problem p(kMostPairTaps, 37, step, filler);
                for (int16_t& c : p.coeffs) c = static_cast<int16_t>(c / divisor);
                PairTotals totals = {};
                std::fill(std::begin(totals.rest), std::end(totals.rest), 1 << 14);
                for (int part = 0; part < 3; ++part)
                    kernels().total(p.signal.data(), p.step, p.coeffs.data(), p.taps, p.count, &totals);
                for (int i = 0; i < p.count; ++i) {
                    ASSERT_EQ(
                        (int64_t{totals.upper[i]} << 24) + (int64_t{totals.lower[i]} << 8) + totals.rest[i],
                        3 * p.sum(i) + (1 << 14))
                        << i << ", step " << step << ", " << filler.name;
                    ASSERT_LT(totals.rest[i], 256);
                }
            }
        }
    }
}

TEST_P(Pairs, MayBeReplacedByWhatTheyAreFilteredTo) {
    for (const int step : {1, 2, 3, 4, 5}) {
        for (const int taps : {16, 55}) {
            Problem p(taps, kMostPairOutputs, step);
            Samples expected(kMostPairOutputs);
            for (int i = 0; i < p.count; ++i) expected[static_cast<size_t>(i)] = p.output(i);
            kernels().filter(p.signal.data(), p.step, p.coeffs.data(), taps, p.count, p.signal.data());
            ASSERT_TRUE(std::equal(expected.begin(), expected.end(), p.signal.begin())) << step;
        }
    }
}

TEST_P(Pairs, LeaveNoUpperHalvesOfRegistersInUse) {
    if (!CPUInfo().has_avx) GTEST_SKIP() << "this processor has no avx, so it has no upper halves";
    PairTotals totals = {};
    Samples out(70);
    for (const int step : {1, 2, 3, 4, 5}) {
        for (const int taps : {2, 16}) {
            const Problem p(taps, 70, step);
            kernels().filter(p.signal.data(), p.step, p.coeffs.data(), taps, p.count, out.data());
            ASSERT_TRUE(upperHalvesAreZero()) << step;
            kernels().total(p.signal.data(), p.step, p.coeffs.data(), taps, p.count, &totals);
            ASSERT_TRUE(upperHalvesAreZero()) << step;
        }
    }
}

}  // namespace
}  // namespace quill::test
