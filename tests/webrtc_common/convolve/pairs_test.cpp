// The kernels for exact sums in every build: what they compute, and that they touch nothing else.
#include "webrtc_common/convolve/pairs.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <vector>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"
#include "tests/webrtc_common/convolve/each_build.h"
#include "tests/webrtc_common/upper_halves.h"

namespace quill::test {
namespace {

using Samples = std::vector<int16_t>;
using Edge = GuardedBytes::Edge;

class Pairs : public EachBuild {
  protected:
    const media::se_wrapper::PairKernels& kernels() const { return GetParam().pairs; }
    static void fill(int16_t* data, size_t count) {
        std::mt19937 random(5);
        kUniform.fill(data, count, random);
    }
};
INSTANTIATE_FOR_EACH_BUILD(Pairs);

TEST_P(Pairs, AreCopiedFromAnyStepWithoutReadingOrWritingFurther) {
    for (const size_t step : std::initializer_list<size_t>{0, 1, 2, 3, 4, 5, 17}) {
        for (size_t count = 1; count <= 70; ++count) {
            const GuardedBuffer<int16_t> from((count - 1) * step + 2), to(2 * count);
            fill(from.data(), from.size());
            kernels().copy(from.data(), step, count, to.data());
            for (size_t i = 0; i < count; ++i) {
                ASSERT_EQ(to[2 * i], from[i * step]) << "step " << step << ", pair " << i << " of " << count;
                ASSERT_EQ(to[2 * i + 1], from[i * step + 1])
                    << "step " << step << ", pair " << i << " of " << count;
            }
        }
    }
}

TEST_P(Pairs, OfNoOutputsAreNotTouched) {
    const GuardedBuffer<int16_t> nothing(0);
    for (const size_t step : std::initializer_list<size_t>{1, 2, 3, 4, 5})
        kernels().copy(nothing.data(), step, 0, nothing.data());
}

// Sums modulo 2^32 of one pair of taps after the other; the rows overlap as those of a filter do.
TEST_P(Pairs, AreMultipliedAndAddedModulo32Bits) {
    for (const int outputs : {16, 32, 48, 64, 80, 96, 160}) {
        for (const int pairs : {1, 2, 7, 32}) {
            const auto count = static_cast<size_t>(outputs);
            const GuardedBuffer<int16_t> samples(2 * (count + static_cast<size_t>(pairs) - 1));
            const GuardedBuffer<int16_t> low(2 * static_cast<size_t>(pairs)), high(low.size());
            const GuardedBuffer<int32_t> low_sums(count), high_sums(count);
            fill(samples.data(), samples.size());
            fill(low.data(), low.size());
            for (size_t k = 0; k < high.size(); ++k) high[k] = -32768;
            std::vector<const int16_t*> rows;
            for (int j = 0; j < pairs; ++j) rows.push_back(samples.data() + 2 * j);
            kernels().sum(rows.data(), low.data(), high.data(), pairs, outputs, low_sums.data(),
                          high_sums.data());
            for (size_t i = 0; i < count; ++i) {
                int64_t expected_low = 0, expected_high = 0;
                for (size_t k = 0; k < low.size(); ++k) {
                    expected_low += int64_t{low[k]} * samples[2 * i + k];
                    expected_high += int64_t{high[k]} * samples[2 * i + k];
                }
                const auto wrapped = [](int64_t sum) { return static_cast<int32_t>(sum & 0xffffffff); };
                ASSERT_EQ(low_sums[i], wrapped(expected_low)) << i << " of " << outputs << ", " << pairs;
                ASSERT_EQ(high_sums[i], wrapped(expected_high)) << i << " of " << outputs << ", " << pairs;
            }
        }
    }
}

TEST_P(Pairs, LeaveNoUpperHalvesOfRegistersInUse) {
    if (!CPUInfo().has_avx) GTEST_SKIP() << "this processor has no avx, so it has no upper halves";
    const Samples from(400, -1);
    Samples to(2 * 100);
    int32_t sums[2][16];
    for (const size_t step : std::initializer_list<size_t>{1, 2, 3, 4, 5}) {
        kernels().copy(from.data(), step, 70, to.data());
        ASSERT_TRUE(upperHalvesAreZero()) << step;
    }
    const int16_t* const row = from.data();
    kernels().sum(&row, from.data(), from.data(), 1, 16, sums[0], sums[1]);
    ASSERT_TRUE(upperHalvesAreZero());
}

}  // namespace
}  // namespace quill::test
