// Included by one file for each instruction set. Static functions only, so that no two builds are confused by the linker.
// The transform: pairs of samples are the complex values of a transform of half the size, computed in radix 4 after one
// step in radix 4 or 8 that needs no twiddles (Cooley and Tukey 1965; the packing of real data: Press et al.,
// Numerical Recipes, "FFT of real functions").
#include <xmmintrin.h>

#include <cstddef>

#include "reference_engine/lanes/lane_bin.inl.h"
#include "reference_engine/lanes/lane_kernels.h"

namespace reference_engine {
namespace {

struct FourBins {
    Bin bin[4];
};

// The transform of four values.
inline FourBins transformFour(const Bin& a, const Bin& b, const Bin& c, const Bin& d) {
    const Bin even_sum = a + c, even_gap = a - c;
    const Bin odd_sum = b + d, odd_gap = timesMinusI(b - d);
    return {{even_sum + odd_sum, even_gap + odd_gap, even_sum - odd_sum, even_gap - odd_gap}};
}

inline void storeFour(const FourBins& from, LaneBin* to, int span) {
    for (int i = 0; i < 4; ++i) store(from.bin[i], to + i * span);
}

// Of eight values: two of four, the second of which is turned by an eighth of a circle more each.
inline void transformEight(LaneBin* at) {
    constexpr float kHalfRoot = 0.70710678f;
    const FourBins even = transformFour(load(at[0]), load(at[2]), load(at[4]), load(at[6]));
    const FourBins odd = transformFour(load(at[1]), load(at[3]), load(at[5]), load(at[7]));
    const FourBins turns = {{odd.bin[0], turned(odd.bin[1], kHalfRoot, -kHalfRoot), timesMinusI(odd.bin[2]),
                             turned(odd.bin[3], -kHalfRoot, -kHalfRoot)}};
    for (int i = 0; i < 4; ++i) {
        store(even.bin[i] + turns.bin[i], at + i);
        store(even.bin[i] - turns.bin[i], at + i + 4);
    }
}

// Of four values at a distance of `span`; `turn`: index of the second one's twiddle.
inline void butterfly(const LaneFftTables& tables, LaneBin* at, int span, int turn) {
    storeFour(transformFour(load(at[0]), turned(load(at[span]), tables.cosine[turn], tables.sine[turn]),
                            turned(load(at[2 * span]), tables.cosine[2 * turn], tables.sine[2 * turn]),
                            turned(load(at[3 * span]), tables.cosine[3 * turn], tables.sine[3 * turn])),
              at, span);
}

// Decimation in time, on values in reversed order of their digits.
void transform(const LaneFftTables& tables, LaneBin* pairs) {
    const int half = tables.size / 2;
    const bool eight = __builtin_ctz(static_cast<unsigned>(half)) % 2 != 0;
    const int first = eight ? 8 : 4;
    for (LaneBin* at = pairs; at != pairs + half; at += first) {
        if (eight) {
            transformEight(at);
        } else {
            storeFour(transformFour(load(at[0]), load(at[1]), load(at[2]), load(at[3])), at, 1);
        }
    }
    for (int span = first; span < half; span *= 4) {
        for (int start = 0; start < half; start += 4 * span) {
            for (int j = 0; j < span; ++j) butterfly(tables, pairs + start + j, span, j * (half / 2 / span));
        }
    }
}

void forward(const LaneFftTables& tables, const Lanes* signals, LaneBin* pairs, LaneBin* spectra) {
    const int half = tables.size / 2;
    for (int j = 0; j < half; ++j) pairs[tables.reversed[j]] = {signals[2 * j], signals[2 * j + 1]};
    transform(tables, pairs);
    spectra[0] = {pairs[0].re + pairs[0].im, Lanes{}};
    spectra[half] = {pairs[0].re - pairs[0].im, Lanes{}};
    for (int k = 1; k <= half / 2; ++k) {
        const Bin a = load(pairs[k]), b = conjugate(load(pairs[half - k]));
        const Bin even = (a + b) * 0.5f;
        const Bin odd = turned(timesMinusI(a - b) * 0.5f, tables.cosine[k], tables.sine[k]);
        store(even + odd, spectra + k);
        store(conjugate(even - odd), spectra + half - k);
    }
}

// Input and output are conjugated, so that the forward butterflies compute this direction, too.
void backward(const LaneFftTables& tables, const LaneBin* spectra, LaneBin* pairs, Lanes* signals) {
    const int half = tables.size / 2;
    pairs[0] = {spectra[0].re + spectra[half].re, spectra[half].re - spectra[0].re};
    for (int k = 1; k <= half / 2; ++k) {
        const Bin a = load(spectra[k]), b = conjugate(load(spectra[half - k]));
        const Bin even = a + b;
        const Bin odd = timesMinusI(turned(a - b, tables.cosine[k], -tables.sine[k]));
        store(conjugate(even - odd), pairs + tables.reversed[k]);
        store(even + odd, pairs + tables.reversed[half - k]);
    }
    transform(tables, pairs);
    for (int j = 0; j < half; ++j) {
        signals[2 * j] = pairs[j].re;
        signals[2 * j + 1] = -pairs[j].im;
    }
}

// Of `count` bins, so few that their sums stay in registers.
template <int count>
inline void accumulateBins(const LaneBin* paths, const FarBins* far_end, int partitions, int bins, int k,
                           LaneBin* sum) {
    Bin sums[std::size_t{count}];
    for (int i = 0; i < count; ++i) sums[i] = zero();
    for (int p = 0; p < partitions; ++p) {
        for (int i = 0; i < count; ++i) {
            const Bin path = load(paths[p * bins + k + i]);
            sums[i] = sums[i] + turned(path, far_end[p].re[k + i], far_end[p].im[k + i]);
        }
    }
    for (int i = 0; i < count; ++i) store(sums[i], sum + k + i);
}

void accumulate(const LaneBin* paths, const FarBins* far_end, int partitions, int bins, LaneBin* sum) {
    constexpr int kTogether = 4;
    int k = 0;
    for (; k + kTogether <= bins; k += kTogether) {
        accumulateBins<kTogether>(paths, far_end, partitions, bins, k, sum);
    }
    for (; k < bins; ++k) accumulateBins<1>(paths, far_end, partitions, bins, k, sum);
}

void adapt(LaneBin* path, const float* re, const float* im, const LaneBin* errors, const float* step,
           const float* last_step, int bins, float* power, float* last_power) {
    for (int k = 0; k < bins; ++k) {
        const Bin steps = factors(step[k], last_step[k]);
        const Bin error = load(errors[k]);
        const Bin sum = load(path[k]) + (steps * re[k] * error + steps * im[k] * timesMinusI(error));
        store(sum, path + k);
        powersOf(sum, power + k, last_power + k);
    }
}

void expect(Lanes* uncertainty, const Lanes* path_power, const Lanes* far_power, float memory, float least,
            int groups, Lanes* residual) {
    for (int g = 0; g < groups; ++g) {
        uncertainty[g] = uncertainty[g] * memory + (path_power[g] * (1 - memory) + least);
        residual[g] += uncertainty[g] * far_power[g];
    }
}

void learn(Lanes* uncertainty, const Lanes* far_power, const Lanes* expected, float share, int groups,
           Lanes* step) {
    for (int g = 0; g < groups; ++g) {
        step[g] = uncertainty[g] / expected[g];
        uncertainty[g] = uncertainty[g] / (1 + step[g] * far_power[g] * share);
    }
}

Lanes magnitudeOf(const Lanes& a) {
    return a < 0 ? -a : a;
}

void scale(Lanes* signals, float factor, float least, int count, Lanes* squares) {
    Lanes sum = {};
    for (int n = 0; n < count; ++n) {
        const Lanes scaled = signals[n] * factor;
        signals[n] = magnitudeOf(scaled) < least ? Lanes{} : scaled;
        sum += signals[n] * signals[n];
    }
    *squares = sum;
}

void magnitudes(const Lanes* signals, int count, Lanes* sum, Lanes* largest) {
    *sum = *largest = Lanes{};
    for (int n = 0; n < count; ++n) {
        const Lanes magnitude = magnitudeOf(signals[n]);
        *sum += magnitude;
        *largest = *largest < magnitude ? magnitude : *largest;
    }
}

void quantise(const Lanes* signals, const Lanes* factor, float limit, int count, LaneInts* out) {
    const Lanes highest = Lanes{} + limit;
    const Lanes half = Lanes{} + 0.5f;
    for (int n = 0; n < count; ++n) {
        const Lanes scaled = signals[n] * *factor;
        const Lanes above = scaled < -highest ? -highest : scaled;
        const Lanes limited = highest < above ? highest : above;
        out[n] = __builtin_convertvector(limited + (limited < 0 ? -half : half), LaneInts);
    }
}

void correlate(const Lanes* a_re, const Lanes* a_im, const Lanes* b_re, const Lanes* b_im, float memory,
               int groups, Lanes* cross_re, Lanes* cross_im, Lanes* power) {
    Lanes sum = {};
    for (int g = 0; g < groups; ++g) {
        cross_re[g] = cross_re[g] * memory + (a_re[g] * b_re[g] + a_im[g] * b_im[g]) * (1 - memory);
        cross_im[g] = cross_im[g] * memory + (a_re[g] * b_im[g] - a_im[g] * b_re[g]) * (1 - memory);
        sum += cross_re[g] * cross_re[g] + cross_im[g] * cross_im[g];
    }
    *power = sum;
}

Lanes squareRootOf(const Lanes& a) {
    Lanes root;
    for (int i = 0; i < kLanes; i += 4) {
        float* const to = reinterpret_cast<float*>(&root) + i;
        _mm_store_ps(to, _mm_sqrt_ps(_mm_load_ps(reinterpret_cast<const float*>(&a) + i)));
    }
    return root;
}

void steer(const LaneBin* spectra, const LaneBin* steering, const float* weight, int bins, Lanes* power,
           Lanes* opposite) {
    constexpr int kSteered = kLanes - 2;
    constexpr float kTiny = 1e-3f;  // against division by zero
    Lanes ahead = {}, behind = {};
    for (int k = 0; k < bins; ++k) {
        if (weight[k] == 0) continue;
        const LaneBin& bin = spectra[k];
        const Lanes to_unit = 1 / squareRootOf(bin.re * bin.re + bin.im * bin.im + kTiny);
        const LaneBin phase = {bin.re * to_unit, bin.im * to_unit};
        Lanes re_cosine = Lanes{} + phase.re[0], im_cosine = Lanes{} + phase.im[0];
        Lanes re_sine = {}, im_sine = {};
        for (int m = 0; m < kSteered; ++m) {
            const LaneBin& turn = steering[k * kSteered + m];
            re_cosine += turn.re * phase.re[m + 1];
            im_cosine += turn.re * phase.im[m + 1];
            re_sine += turn.im * phase.re[m + 1];
            im_sine += turn.im * phase.im[m + 1];
        }
        const LaneBin sum = {re_cosine - im_sine, im_cosine + re_sine};
        const LaneBin mirrored = {re_cosine + im_sine, im_cosine - re_sine};
        ahead += (sum.re * sum.re + sum.im * sum.im) * weight[k];
        behind += (mirrored.re * mirrored.re + mirrored.im * mirrored.im) * weight[k];
    }
    *power = ahead;
    *opposite = behind;
}

constexpr LaneKernels kLaneKernels = {forward, backward,   accumulate, adapt,     expect, learn,
                                      scale,   magnitudes, quantise,   correlate, steer};

}  // namespace
}  // namespace reference_engine
