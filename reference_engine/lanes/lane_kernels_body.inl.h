// Included by one file for each instruction set. Static functions only, so that no two builds are confused by the linker.
// The transform: pairs of samples are the complex values of a transform of half the size, computed in radix 4 after one
// step in radix 2 where the half is no power of 4 (Cooley and Tukey 1965; the packing of real data: Press et al.,
// Numerical Recipes, "FFT of real functions").
#include <xmmintrin.h>

#include "reference_engine/lanes/lane_kernels.h"

namespace reference_engine {
namespace {

LaneBin turned(const LaneBin& value, float cosine, float sine) {
    return {value.re * cosine - value.im * sine, value.re * sine + value.im * cosine};
}

// Of four values at a distance of `span`; `turn`: index of the second one's twiddle.
inline void butterfly(const LaneFftTables& tables, LaneBin* at, int span, int turn) {
    const LaneBin a = at[0];
    const LaneBin b = turned(at[span], tables.cosine[turn], tables.sine[turn]);
    const LaneBin c = turned(at[2 * span], tables.cosine[2 * turn], tables.sine[2 * turn]);
    const LaneBin d = turned(at[3 * span], tables.cosine[3 * turn], tables.sine[3 * turn]);
    const LaneBin even_sum = {a.re + c.re, a.im + c.im};
    const LaneBin even_gap = {a.re - c.re, a.im - c.im};
    const LaneBin odd_sum = {b.re + d.re, b.im + d.im};
    const LaneBin odd_gap = {b.im - d.im, d.re - b.re};  // times -i
    at[0] = {even_sum.re + odd_sum.re, even_sum.im + odd_sum.im};
    at[span] = {even_gap.re + odd_gap.re, even_gap.im + odd_gap.im};
    at[2 * span] = {even_sum.re - odd_sum.re, even_sum.im - odd_sum.im};
    at[3 * span] = {even_gap.re - odd_gap.re, even_gap.im - odd_gap.im};
}

// Decimation in time, on values in reversed order of their digits.
void transform(const LaneFftTables& tables, LaneBin* pairs) {
    const int half = tables.size / 2;
    int span = 1;
    if (__builtin_ctz(static_cast<unsigned>(half)) % 2 != 0) {
        for (int i = 0; i < half; i += 2) {
            const LaneBin a = pairs[i], b = pairs[i + 1];
            pairs[i] = {a.re + b.re, a.im + b.im};
            pairs[i + 1] = {a.re - b.re, a.im - b.im};
        }
        span = 2;
    }
    for (; span < half; span *= 4) {
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
    for (int k = 1; k < half; ++k) {
        const LaneBin a = pairs[k], b = pairs[half - k];
        const LaneBin odd =
            turned({(a.im + b.im) * 0.5f, (b.re - a.re) * 0.5f}, tables.cosine[k], tables.sine[k]);
        spectra[k] = {(a.re + b.re) * 0.5f + odd.re, (a.im - b.im) * 0.5f + odd.im};
    }
}

// The first and the last bin are taken as real. Input and output are conjugated, so that the forward butterflies
// compute this direction, too.
void backward(const LaneFftTables& tables, const LaneBin* spectra, LaneBin* pairs, Lanes* signals) {
    const int half = tables.size / 2;
    pairs[0] = {spectra[0].re + spectra[half].re, spectra[half].re - spectra[0].re};
    for (int k = 1; k < half; ++k) {
        const LaneBin a = spectra[k], b = spectra[half - k];
        const LaneBin odd = turned({a.re - b.re, a.im + b.im}, tables.cosine[k], -tables.sine[k]);
        pairs[tables.reversed[k]] = {a.re + b.re - odd.im, b.im - a.im - odd.re};
    }
    transform(tables, pairs);
    for (int j = 0; j < half; ++j) {
        signals[2 * j] = pairs[j].re;
        signals[2 * j + 1] = -pairs[j].im;
    }
}

void accumulate(const LaneBin* path, const float* re, const float* im, int bins, LaneBin* sum) {
    for (int k = 0; k < bins; ++k) {
        sum[k].re += path[k].re * re[k] - path[k].im * im[k];
        sum[k].im += path[k].re * im[k] + path[k].im * re[k];
    }
}

void adapt(LaneBin* path, const float* re, const float* im, const LaneBin* errors, const float* step,
           const float* last_step, int bins, float* power, float* last_power) {
    constexpr Lanes kLast = {0, 0, 0, 0, 0, 0, 0, 1};
    constexpr Lanes kOthers = {1, 1, 1, 1, 1, 1, 1, 0};
    for (int k = 0; k < bins; ++k) {
        const Lanes steps = kOthers * step[k] + kLast * last_step[k];
        const Lanes gain_re = steps * re[k];
        const Lanes gain_im = steps * im[k];
        const Lanes new_re = path[k].re + (gain_re * errors[k].re + gain_im * errors[k].im);
        const Lanes new_im = path[k].im + (gain_re * errors[k].im - gain_im * errors[k].re);
        path[k] = {new_re, new_im};
        const Lanes powers = new_re * new_re + new_im * new_im;
        power[k] = powers[0];
        last_power[k] = powers[kLanes - 1];
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

}  // namespace
}  // namespace reference_engine
