// The inner loops over lanes: all builds give the same bits, and the transform is the direct one.
#include "reference_engine/lanes/lane_kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstring>
#include <random>
#include <vector>

#include "reference_engine/lanes/lane_fft.h"
#include "reference_engine/lanes/single_fft.h"

using namespace reference_engine;

namespace {

constexpr int kSize = 256;
constexpr int kBins = kSize / 2 + 1;
constexpr int kGroups = 16;

// As elements of a vector, which drops the alignment of a bare vector type.
struct Cell {
    Lanes lanes;
};

// Samples as the transforms take them, two in a line of the cache.
struct Signals {
    explicit Signals(int count) : pairs(static_cast<size_t>(count / 2)) {}
    Lanes& operator[](int n) {
        return n % 2 == 0 ? pairs[static_cast<size_t>(n) / 2].re : pairs[static_cast<size_t>(n) / 2].im;
    }
    Lanes* data() { return &pairs.data()->re; }
    std::vector<LaneBin> pairs;
};
struct GroupCell {
    Group lanes;
};

// Eight rows of `count` values, one behind the other.
template <class T>
struct Rows {
    explicit Rows(size_t count) : values(kLanes * count) {
        for (size_t m = 0; m < kLanes; ++m) row[m] = values.data() + m * count;
    }
    T* const* begins() { return row; }
    std::vector<T> values;
    T* row[kLanes];
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

    std::vector<GroupCell> groups(size_t count, float lowest, float highest) {
        std::uniform_real_distribution<float> number(lowest, highest);
        std::vector<GroupCell> row(count);
        for (GroupCell& cell : row) {
            for (int i = 0; i < kGroup; ++i) cell.lanes[i] = number(random_);
        }
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
    for (const int size : {32, 64, 128, 512, 1024}) {
        LaneFft fft;
        fft.init(size);
        Signals signals(size);
        std::mt19937 random(static_cast<unsigned>(size));
        std::uniform_real_distribution<float> number(-1, 1);
        for (int n = 0; n < size; ++n) {
            for (int i = 0; i < kLanes; ++i) signals[n][i] = number(random);
        }
        std::vector<LaneBin> spectra(static_cast<size_t>(size / 2 + 1));
        fft.forward(signals.data(), spectra.data());
        for (const int k : {0, 1, size / 4, size / 2 - 1, size / 2}) {
            for (int lane = 0; lane < kLanes; lane += 3) {
                std::complex<double> sum = 0;
                for (int n = 0; n < size; ++n) {
                    const double sample = static_cast<double>(signals[n][lane]);
                    sum += sample * std::polar(1.0, -2 * M_PI * k * n / size);
                }
                EXPECT_NEAR(static_cast<double>(spectra[static_cast<size_t>(k)].re[lane]), sum.real(), 1e-4);
                EXPECT_NEAR(static_cast<double>(spectra[static_cast<size_t>(k)].im[lane]), sum.imag(), 1e-4);
            }
        }
        Signals back(size);
        fft.backward(spectra.data(), back.data());
        for (int n = 0; n < size; ++n) {
            EXPECT_NEAR(back[n][5] / static_cast<float>(size), signals[n][5], 1e-6F) << size;
        }
    }
}

TEST(SingleFft, IsTheTransformOfOneLane) {
    for (const int size : {256, 512, 1024}) {
        LaneFft lane_fft;
        SingleFft fft;
        lane_fft.init(size);
        fft.init(size);
        Signals signals(size);
        alignas(LaneBin) float samples[1024];
        std::mt19937 random(static_cast<unsigned>(size));
        std::uniform_real_distribution<float> number(-1, 1);
        for (int n = 0; n < size; ++n) {
            signals[n] = Lanes{};
            signals[n][3] = samples[n] = number(random);
        }
        const size_t count = static_cast<size_t>(size) / 2 + 1;
        std::vector<LaneBin> spectra(count);
        lane_fft.forward(signals.data(), spectra.data());
        constexpr float kBehind = 77;
        std::vector<float> re(count + 1, kBehind), im(count + 1, kBehind);
        fft.forward(samples, re.data(), im.data());
        for (size_t k = 0; k < count; ++k) {
            EXPECT_NEAR(re[k], spectra[k].re[3], 2e-5F) << k;
            EXPECT_NEAR(im[k], spectra[k].im[3], 2e-5F) << k;
        }
        EXPECT_EQ(re[count], kBehind);
        EXPECT_EQ(im[count], kBehind);
    }
}

TEST_P(LaneKernelsTest, SpectraOfPhasesHaveTheSameBits) {
    const std::vector<LaneBin> phases = bins(kSize / 16 + 1), turns = bins(kSize / 16 + 1);
    std::vector<float> re_a(kBins), im_a(kBins), re_b(kBins), im_b(kBins);
    narrow_.combine(phases.data(), turns.data(), kSize, re_a.data(), im_a.data());
    wide_.combine(phases.data(), turns.data(), kSize, re_b.data(), im_b.data());
    EXPECT_TRUE(same(re_a, re_b));
    EXPECT_TRUE(same(im_a, im_b));
}

TEST_P(LaneKernelsTest, TransformsHaveTheSameBits) {
    LaneFftTables tables;
    tables.size = kSize;
    for (int k = 0; k < 3 * kSize / 4; ++k) {
        tables.cosine[k] = static_cast<float>(std::cos(2 * M_PI * k / kSize));
        tables.sine[k] = static_cast<float>(-std::sin(2 * M_PI * k / kSize));
    }
    for (int i = 0; i < kSize / 2; ++i) tables.place[i] = tables.source[i] = static_cast<uint16_t>(i);
    Signals signals(kSize), c(kSize), d(kSize);
    signals.pairs = bins(kSize / 2);
    std::vector<LaneBin> a(kBins), b(kBins);
    narrow_.forward(tables, signals.data(), a.data());
    wide_.forward(tables, signals.data(), b.data());
    EXPECT_TRUE(same(a, b));
    narrow_.backward(tables, a.data(), c.data());
    wide_.backward(tables, a.data(), d.data());
    EXPECT_TRUE(same(c.pairs, d.pairs));
}

TEST_P(LaneKernelsTest, PathsHaveTheSameBits) {
    const std::vector<LaneBin> errors = bins(kBins);
    const std::vector<float> re = numbers(kBins), im = numbers(kBins), step = numbers(kBins),
                             last = numbers(kBins);
    std::vector<LaneBin> a = bins(3 * kBins), b = a, sum_a(kBins), sum_b(kBins);
    const auto partitions = [&](std::vector<LaneBin>& paths) {
        return std::array<LanePartition, 3>{
            {{paths.data(), re.data(), im.data(), last.data(), step.data(), step.data(), last.data()},
             {paths.data() + kBins, im.data(), re.data(), re.data(), last.data(), last.data(), step.data()},
             {paths.data() + 2 * kBins, last.data(), step.data(), nullptr, nullptr, nullptr, nullptr}}};
    };
    narrow_.adaptAndPredict(partitions(a).data(), 2, 3, errors.data(), 0.25F, kBins, sum_a.data());
    wide_.adaptAndPredict(partitions(b).data(), 2, 3, errors.data(), 0.25F, kBins, sum_b.data());
    EXPECT_TRUE(same(a, b));
    EXPECT_TRUE(same(sum_a, sum_b));
    narrow_.adapt(partitions(a)[1], errors.data(), kBins);
    wide_.adapt(partitions(b)[1], errors.data(), kBins);
    EXPECT_TRUE(same(a, b));

    std::vector<float> mean_a(kBins), mean_b(kBins), last_a(kBins), last_b(kBins);
    narrow_.powers(a.data(), kBins, mean_a.data(), last_a.data());
    wide_.powers(a.data(), kBins, mean_b.data(), last_b.data());
    EXPECT_TRUE(same(mean_a, mean_b));
    EXPECT_TRUE(same(last_a, last_b));
}

// One partition that learns and one that does not, against complex numbers.
TEST_P(LaneKernelsTest, PathsLearnAndPredict) {
    const std::vector<LaneBin> errors = bins(kBins);
    const std::vector<float> re = numbers(kBins), im = numbers(kBins), step = numbers(kBins),
                             last = numbers(kBins);
    const std::vector<LaneBin> before = bins(2 * kBins);
    std::vector<LaneBin> paths = before, sum(kBins);
    const LanePartition partitions[] = {
        {paths.data(), re.data(), im.data(), last.data(), step.data(), step.data(), last.data()},
        {paths.data() + kBins, im.data(), re.data(), nullptr, nullptr, nullptr, nullptr}};
    wide_.adaptAndPredict(partitions, 1, 2, errors.data(), 0.5F, kBins, sum.data());
    for (size_t k = 0; k < kBins; ++k) {
        for (int lane = 0; lane < kLanes; ++lane) {
            const auto at = [&](const std::vector<LaneBin>& row, size_t i) {
                return std::complex<float>(row[i].re[lane], row[i].im[lane]);
            };
            const float of_lane = lane == kLanes - 1 ? last[k] : step[k];
            const std::complex<float> learnt(last[k], step[k]);
            const auto first = at(before, k) + of_lane * std::conj(learnt) * at(errors, k);
            const auto all = 0.5F * (first * std::complex<float>(re[k], im[k]) +
                                     at(before, kBins + k) * std::complex<float>(im[k], re[k]));
            EXPECT_NEAR(std::abs(at(paths, k) - first), 0, 1e-5F * std::abs(first) + 1e-2F);
            EXPECT_EQ(at(paths, kBins + k), at(before, kBins + k));
            EXPECT_NEAR(std::abs(at(sum, k) - all), 0, 1e-5F * std::abs(all) + 1e-1F);
        }
    }
}

TEST_P(LaneKernelsTest, ErrorsHaveTheSameBits) {
    const std::vector<Cell> signals = lanes(kSize), echo = lanes(kSize);
    std::vector<Cell> errors_a(kSize), errors_b(kSize), sums(2);
    narrow_.subtract(at(signals), at(echo), kSize, at(errors_a), &sums[0].lanes);
    wide_.subtract(at(signals), at(echo), kSize, at(errors_b), &sums[1].lanes);
    EXPECT_TRUE(same(errors_a, errors_b));
    EXPECT_EQ(std::memcmp(&sums[0], &sums[1], sizeof(Cell)), 0);
}

TEST_P(LaneKernelsTest, UncertaintiesHaveTheSameBits) {
    const std::vector<float> path_power = {0.5F, 0.25F};
    const std::vector<GroupCell> far_power = groups(2, 0, 1e6F), error_power = groups(2, 0, 1e9F);
    const std::vector<GroupCell> uncertainty = groups(4, 0, 1);
    const LaneKalman constants = {0.01F, 0.6F, 0.7F, 0.4F};
    struct State {
        std::vector<GroupCell> uncertainty, step, noise, residual;
    };
    const auto run = [&](const LaneKernels& kernels) {
        State state = {uncertainty, groups(4, 0, 0), groups(2, 5, 5), groups(2, 0, 0)};
        LaneUncertainty partitions[2];
        for (int p = 0; p < 2; ++p) {
            partitions[p] = {at(state.uncertainty) + 2 * p, path_power.data(), at(far_power), 1e-9F,
                             at(state.step) + 2 * p};
        }
        kernels.kalman(partitions, 1, 2, constants, at(error_power), 2, at(state.noise), at(state.residual));
        return state;
    };
    const State a = run(narrow_), b = run(wide_);
    EXPECT_TRUE(same(a.uncertainty, b.uncertainty));
    EXPECT_TRUE(same(a.step, b.step));
    EXPECT_TRUE(same(a.noise, b.noise));
    EXPECT_TRUE(same(a.residual, b.residual));
}

// Two partitions that learn and one that does not, two groups, against the formulas.
TEST_P(LaneKernelsTest, UncertaintiesFollowTheFormulas) {
    constexpr size_t kCount = 3, kBegin = 2;
    const std::vector<float> path_power = {0.5F, 0.25F};
    const std::vector<GroupCell> far_power = groups(kCount * kBegin, 0, 1e3F),
                                 error = groups(kBegin, 0, 1e3F);
    const std::vector<GroupCell> before = groups(kCount * kBegin, 0, 1);
    const LaneKalman of = {0.01F, 0.6F, 0.7F, 0.4F};
    std::vector<GroupCell> after = before, step = groups(kCount * kBegin, 7, 7), noise = groups(kBegin, 5, 5),
                           residual = groups(kBegin, 0, 0);
    LaneUncertainty partitions[kCount];
    for (size_t p = 0; p < kCount; ++p) {
        partitions[p] = {at(after) + kBegin * p, path_power.data(), at(far_power) + kBegin * p, 1e-3F,
                         at(step) + kBegin * p};
    }
    wide_.kalman(partitions, 2, kCount, of, at(error), kBegin, at(noise), at(residual));
    for (size_t g = 0; g < kBegin; ++g) {
        for (int i = 0; i < kGroup; ++i) {
            const auto grown = [&](size_t p) {
                const float uncertainty = before[kBegin * p + g].lanes[i];
                return p == 2 ? uncertainty : uncertainty * 0.99F + 0.01F * path_power[g] + 1e-3F;
            };
            const auto far = [&](size_t p) { return far_power[kBegin * p + g].lanes[i]; };
            const float unknown = 0.7F * (grown(0) * far(0) + grown(1) * far(1) + grown(2) * far(2));
            const float mean = 0.6F * 5 + 0.4F * error[g].lanes[i];
            const float expected = unknown + std::max(mean, error[g].lanes[i]);
            EXPECT_NEAR(residual[g].lanes[i] / unknown, 1, 1e-5F);
            EXPECT_NEAR(noise[g].lanes[i] / mean, 1, 1e-5F);
            for (size_t p = 0; p < 2; ++p) {
                const float learnt = grown(p) / expected;
                EXPECT_NEAR(step[kBegin * p + g].lanes[i] / learnt, 1, 1e-4F);
                const float known = 1 + 0.4F * 0.7F * learnt * far(p);
                EXPECT_NEAR(after[kBegin * p + g].lanes[i] * known / grown(p), 1, 1e-4F);
            }
            EXPECT_EQ(step[kBegin * 2 + g].lanes[i], 7);
            EXPECT_EQ(after[kBegin * 2 + g].lanes[i], before[kBegin * 2 + g].lanes[i]);
        }
    }
}

TEST_P(LaneKernelsTest, InterpolationsHaveTheSameBits) {
    const std::vector<float> samples = numbers(kSize);
    const std::vector<Cell> taps = lanes(3 * 5, -1, 1);
    const std::vector<int> place = {0, 1, 7, 200}, phase = {0, 3, 2, 1};
    const std::vector<float> share = {0, 0.5F, 0.25F, 1};
    std::vector<float> a(4), b(4);
    narrow_.interpolate(samples.data(), at(taps), place.data(), phase.data(), share.data(), 4, a.data());
    wide_.interpolate(samples.data(), at(taps), place.data(), phase.data(), share.data(), 4, b.data());
    EXPECT_TRUE(same(a, b));
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
    Rows<int16_t> rounded_a(kSize), rounded_b(kSize);
    narrow_.quantise(at(taps), at(factor), 32766, kSize, rounded_a.begins());
    wide_.quantise(at(taps), at(factor), 32766, kSize, rounded_b.begins());
    EXPECT_TRUE(same(rounded_a.values, rounded_b.values));
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
    const float values[] = {0.5F, -0.5F, 1.4F, -1.6F, 99.0F, -99.0F, 0, 2.5F};
    const int expected[] = {1, -1, 1, -2, 10, -10, 0, 3};
    Lanes signals[kLanes];
    for (int n = 0; n < kLanes; ++n) signals[n] = Lanes{} + values[n];
    const Lanes factor = {1, 1, 1, 2, 1, 1, 1, 1};
    Rows<int16_t> out(kLanes);
    laneKernels().quantise(signals, &factor, 10, kLanes, out.begins());
    for (int n = 0; n < kLanes; ++n) EXPECT_EQ(out.row[kLanes - 1][n], expected[n]) << n;
    EXPECT_EQ(out.row[3][2], 3);
    EXPECT_EQ(out.row[3][7], 5);
}

TEST_P(LaneKernelsTest, RowsBecomeLanes) {
    Rows<int16_t> samples(kSize);
    Rows<int32_t> sums(kSize);
    for (int16_t& value : samples.values) value = static_cast<int16_t>(random_());
    for (int32_t& value : sums.values) value = static_cast<int32_t>(random_());
    std::vector<Cell> signals(kSize), all(kSize);
    wide_.gather(samples.begins(), kSize, at(signals));
    all = signals;
    const Lanes factor = {1, 0.5F, 0.25F, 2, 1, 1, 4, 0.125F};
    wide_.addRows(sums.begins(), &factor, kSize, at(all));
    for (size_t n = 0; n < kSize; ++n) {
        for (int m = 0; m < kLanes; ++m) {
            const float sample = samples.row[m][n];
            EXPECT_EQ(signals[n].lanes[m], sample);
            EXPECT_EQ(all[n].lanes[m], sample + static_cast<float>(sums.row[m][n]) * factor[m]);
        }
    }
}

// The last group is not full.
TEST_P(LaneKernelsTest, PowersOfGroupsAreThoseOfTheFirstAndTheLastSpectrum) {
    const std::vector<LaneBin> spectra = bins(kGroup + 1);
    float first_a[2], first_b[2], last_a[2], last_b[2];
    narrow_.groupPowers(spectra.data(), kGroup + 1, first_a, last_a);
    wide_.groupPowers(spectra.data(), kGroup + 1, first_b, last_b);
    float sum = 0;
    for (size_t k = 0; k < kGroup; ++k)
        sum += spectra[k].re[0] * spectra[k].re[0] + spectra[k].im[0] * spectra[k].im[0];
    const LaneBin& alone = spectra[kGroup];
    EXPECT_NEAR(first_a[0], sum / kGroup, 1e-5F * sum);
    EXPECT_EQ(last_a[1], alone.re[7] * alone.re[7] + alone.im[7] * alone.im[7]);
    EXPECT_EQ(std::memcmp(first_a, first_b, sizeof first_a), 0);
    EXPECT_EQ(std::memcmp(last_a, last_b, sizeof last_a), 0);
}
