// The inner loops over lanes: all builds give the same bits, and the transform is the direct one.
#include "reference_engine/lanes/lane_kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstring>
#include <random>
#include <vector>

#include "reference_engine/lanes/lane_fft.h"

using namespace reference_engine;

namespace {

constexpr int kSize = 256;
constexpr int kBins = kSize / 2 + 1;
constexpr int kGroups = 16;

// As elements of a vector, which drops the alignment of a bare vector type.
struct Cell {
    Lanes lanes;
};
struct IntCell {
    LaneInts lanes;
};

template <class T>
auto* at(std::vector<T>& row) {
    return &row.data()->lanes;
}
template <class T>
const auto* at(const std::vector<T>& row) {
    return &row.data()->lanes;
}

struct Build {
    const char* name;
    bool runs_here;
    const LaneKernels* kernels;
};

// Rows of numbers that the narrowest build and a wide one get.
class LaneKernelsTest : public testing::TestWithParam<Build> {
  protected:
    void SetUp() override {
        if (!GetParam().runs_here) GTEST_SKIP() << "this processor has no " << GetParam().name;
    }

    std::vector<Cell> lanes(size_t count, float lowest = -1000, float highest = 1000) {
        std::uniform_real_distribution<float> number(lowest, highest);
        std::vector<Cell> row(count);
        for (Cell& cell : row) {
            for (int i = 0; i < kLanes; ++i) cell.lanes[i] = number(random_);
        }
        return row;
    }
    std::vector<LaneBin> bins(size_t count) {
        const std::vector<Cell> re = lanes(count), im = lanes(count);
        std::vector<LaneBin> row(count);
        for (size_t k = 0; k < count; ++k) row[k] = {re[k].lanes, im[k].lanes};
        return row;
    }
    std::vector<float> numbers(size_t count) {
        std::uniform_real_distribution<float> number(-10, 10);
        std::vector<float> row(count);
        for (float& value : row) value = number(random_);
        return row;
    }

    template <class T>
    static bool same(const std::vector<T>& a, const std::vector<T>& b) {
        return std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
    }

    const LaneKernels& narrow_ = kLaneKernelsSse2;
    const LaneKernels& wide_ = *GetParam().kernels;
    std::mt19937 random_{1};
};

INSTANTIATE_TEST_SUITE_P(
    Builds, LaneKernelsTest,
    testing::Values(Build{"avx2", __builtin_cpu_supports("avx2") != 0, &kLaneKernelsAvx2},
                    Build{"avx512", __builtin_cpu_supports("avx512f") != 0, &kLaneKernelsAvx512}),
    [](const testing::TestParamInfo<Build>& build) { return build.param.name; });

}  // namespace

TEST(LaneFft, IsTheDirectTransformOfEachLane) {
    for (const int size : {8, 16, 32, 128, 512, 1024}) {
        LaneFft fft;
        fft.init(size);
        std::vector<Cell> signals(static_cast<size_t>(size));
        std::mt19937 random(static_cast<unsigned>(size));
        std::uniform_real_distribution<float> number(-1, 1);
        for (Cell& cell : signals) {
            for (int i = 0; i < kLanes; ++i) cell.lanes[i] = number(random);
        }
        std::vector<LaneBin> spectra(static_cast<size_t>(size / 2 + 1));
        fft.forward(at(signals), spectra.data());
        for (const int k : {0, 1, size / 4, size / 2 - 1, size / 2}) {
            for (int lane = 0; lane < kLanes; lane += 3) {
                std::complex<double> sum = 0;
                for (int n = 0; n < size; ++n) {
                    const double sample = static_cast<double>(signals[static_cast<size_t>(n)].lanes[lane]);
                    sum += sample * std::polar(1.0, -2 * M_PI * k * n / size);
                }
                EXPECT_NEAR(static_cast<double>(spectra[static_cast<size_t>(k)].re[lane]), sum.real(), 1e-4);
                EXPECT_NEAR(static_cast<double>(spectra[static_cast<size_t>(k)].im[lane]), sum.imag(), 1e-4);
            }
        }
        std::vector<Cell> back(static_cast<size_t>(size));
        fft.backward(spectra.data(), at(back));
        for (size_t n = 0; n < back.size(); ++n) {
            EXPECT_NEAR(back[n].lanes[5] / static_cast<float>(size), signals[n].lanes[5], 1e-6F) << size;
        }
    }
}

TEST_P(LaneKernelsTest, TransformsHaveTheSameBits) {
    LaneFftTables tables;
    tables.size = kSize;
    for (int k = 0; k < 3 * kSize / 4; ++k) {
        tables.cosine[k] = static_cast<float>(std::cos(2 * M_PI * k / kSize));
        tables.sine[k] = static_cast<float>(-std::sin(2 * M_PI * k / kSize));
    }
    for (int i = 0; i < kSize / 2; ++i) tables.reversed[i] = static_cast<uint16_t>(i);
    const std::vector<Cell> signals = lanes(kSize);
    std::vector<LaneBin> pairs(kSize / 2), a(kBins), b(kBins);
    narrow_.forward(tables, at(signals), pairs.data(), a.data());
    wide_.forward(tables, at(signals), pairs.data(), b.data());
    EXPECT_TRUE(same(a, b));
    std::vector<Cell> c(kSize), d(kSize);
    narrow_.backward(tables, a.data(), pairs.data(), at(c));
    wide_.backward(tables, a.data(), pairs.data(), at(d));
    EXPECT_TRUE(same(c, d));
}

TEST_P(LaneKernelsTest, PathsHaveTheSameBits) {
    const std::vector<LaneBin> path = bins(kBins), errors = bins(kBins);
    const std::vector<float> re = numbers(kBins), im = numbers(kBins), step = numbers(kBins),
                             last = numbers(kBins);
    std::vector<LaneBin> a = path, b = path;
    const std::vector<LaneBin> paths = bins(3 * kBins);
    const FarBins far_end[] = {{re.data(), im.data()}, {step.data(), last.data()}, {last.data(), re.data()}};
    narrow_.accumulate(paths.data(), far_end, 3, kBins, a.data());
    wide_.accumulate(paths.data(), far_end, 3, kBins, b.data());
    EXPECT_TRUE(same(a, b));

    std::vector<float> power_a(kBins), power_b(kBins), last_a(kBins), last_b(kBins);
    narrow_.adapt(a.data(), re.data(), im.data(), errors.data(), step.data(), last.data(), kBins,
                  power_a.data(), last_a.data());
    wide_.adapt(b.data(), re.data(), im.data(), errors.data(), step.data(), last.data(), kBins,
                power_b.data(), last_b.data());
    EXPECT_TRUE(same(a, b));
    EXPECT_TRUE(same(power_a, power_b));
    EXPECT_TRUE(same(last_a, last_b));
}

TEST_P(LaneKernelsTest, UncertaintiesHaveTheSameBits) {
    const std::vector<Cell> path = lanes(kGroups, 0, 1), far_end = lanes(kGroups, 0, 1e6F);
    std::vector<Cell> a = lanes(kGroups, 0, 1), b = a, residual_a(kGroups), residual_b(kGroups);
    narrow_.expect(at(a), at(path), at(far_end), 0.99F, 1e-9F, kGroups, at(residual_a));
    wide_.expect(at(b), at(path), at(far_end), 0.99F, 1e-9F, kGroups, at(residual_b));
    EXPECT_TRUE(same(a, b));
    EXPECT_TRUE(same(residual_a, residual_b));

    std::vector<Cell> step_a(kGroups), step_b(kGroups);
    narrow_.learn(at(a), at(far_end), at(residual_a), 0.3F, kGroups, at(step_a));
    wide_.learn(at(b), at(far_end), at(residual_a), 0.3F, kGroups, at(step_b));
    EXPECT_TRUE(same(a, b));
    EXPECT_TRUE(same(step_a, step_b));
}

TEST_P(LaneKernelsTest, TapsHaveTheSameBits) {
    std::vector<Cell> a = lanes(kSize, -1e-8F, 1e-8F), b = a, squares_a(1), squares_b(1);
    narrow_.scale(at(a), 0.25F, 1e-9F, kSize, at(squares_a));
    wide_.scale(at(b), 0.25F, 1e-9F, kSize, at(squares_b));
    EXPECT_TRUE(same(a, b));
    EXPECT_TRUE(same(squares_a, squares_b));

    const std::vector<Cell> taps = lanes(kSize), factor = lanes(1, 1, 100);
    std::vector<Cell> sums_a(2), sums_b(2);
    narrow_.magnitudes(at(taps), kSize, &sums_a[0].lanes, &sums_a[1].lanes);
    wide_.magnitudes(at(taps), kSize, &sums_b[0].lanes, &sums_b[1].lanes);
    EXPECT_TRUE(same(sums_a, sums_b));
    std::vector<IntCell> rounded_a(kSize), rounded_b(kSize);
    narrow_.quantise(at(taps), at(factor), 32766, kSize, at(rounded_a));
    wide_.quantise(at(taps), at(factor), 32766, kSize, at(rounded_b));
    EXPECT_TRUE(same(rounded_a, rounded_b));
}

TEST_P(LaneKernelsTest, CorrelationsHaveTheSameBits) {
    const std::vector<Cell> a_re = lanes(kGroups), a_im = lanes(kGroups), b_re = lanes(kGroups),
                            b_im = lanes(kGroups);
    std::vector<Cell> re_a = lanes(kGroups), im_a = lanes(kGroups), re_b = re_a, im_b = im_a, power_a(1),
                      power_b(1);
    narrow_.correlate(at(a_re), at(a_im), at(b_re), at(b_im), 0.9F, kGroups, at(re_a), at(im_a), at(power_a));
    wide_.correlate(at(a_re), at(a_im), at(b_re), at(b_im), 0.9F, kGroups, at(re_b), at(im_b), at(power_b));
    EXPECT_TRUE(same(re_a, re_b));
    EXPECT_TRUE(same(im_a, im_b));
    EXPECT_TRUE(same(power_a, power_b));
}

TEST_P(LaneKernelsTest, SteeredPowersHaveTheSameBits) {
    const std::vector<LaneBin> spectra = bins(kBins), steering = bins(kBins * (kLanes - 2));
    std::vector<float> weight = numbers(kBins);
    weight[3] = 0;
    Lanes a[2], b[2];
    narrow_.steer(spectra.data(), steering.data(), weight.data(), kBins, &a[0], &a[1]);
    wide_.steer(spectra.data(), steering.data(), weight.data(), kBins, &b[0], &b[1]);
    EXPECT_EQ(std::memcmp(a, b, sizeof a), 0);
}

// Signals that the steering of lane 2 brings in phase, in two bins, and those of its mirror image in a third one.
TEST(LaneSteer, FindsTheDirectionWhoseSteeringAlignsTheSignals) {
    constexpr int kSteered = kLanes - 2;
    LaneBin spectra[3] = {}, steering[3 * kSteered] = {};
    for (int k = 0; k < 3; ++k) {
        for (int m = 0; m <= kSteered; ++m) {
            for (int d = 0; d < kLanes && m > 0; ++d) {
                const double turn = 0.7 * m * (d + 1) + k;
                steering[k * kSteered + m - 1].re[d] = static_cast<float>(std::cos(turn));
                steering[k * kSteered + m - 1].im[d] = static_cast<float>(std::sin(turn));
            }
            const double late = m == 0 ? 0 : (0.7 * m * 3 + k) * (k == 2 ? -1 : 1);
            spectra[k].re[m] = static_cast<float>(100 * (m + 1) * std::cos(late));
            spectra[k].im[m] = static_cast<float>(-100 * (m + 1) * std::sin(late));
        }
    }
    const float weight[] = {1, 0.5F, 0.25F};
    Lanes power, opposite;
    laneKernels().steer(spectra, steering, weight, 2, &power, &opposite);
    EXPECT_NEAR(power[2], 49 * 1.5, 1e-3);
    EXPECT_LT(power[0], 30);
    EXPECT_LT(opposite[2], 30);
    laneKernels().steer(spectra + 2, steering + 2 * kSteered, weight + 2, 1, &power, &opposite);
    EXPECT_NEAR(opposite[2], 49 * 0.25, 1e-3);
}

TEST(LaneQuantise, RoundsHalvesAwayFromZeroWithinTheLimit) {
    const Lanes values = {0.5F, -0.5F, 1.4F, -1.6F, 99.0F, -99.0F, 0, 2.5F};
    const Lanes unity = Lanes{} + 1;
    LaneInts out;
    laneKernels().quantise(&values, &unity, 10, 1, &out);
    const int expected[] = {1, -1, 1, -2, 10, -10, 0, 3};
    for (int i = 0; i < kLanes; ++i) EXPECT_EQ(out[i], expected[i]) << i;
}
